/** @import { PlainRecord, Tool } from './types.js' */
/** @import { Facts } from './inventory.js' */

/**
 * The disks and drives of a call, separated into those whose content is lost and the others.
 * @typedef {object} Targets
 * @property {PlainRecord[]} lostDisks
 * @property {PlainRecord[]} lostDrives
 * @property {PlainRecord[]} otherDisks
 * @property {PlainRecord[]} otherDrives
 */

/** @param {Tool} tool @param {Facts} facts @returns {Targets} */
export function targetsOf(tool, facts) {
    const isLost = (/** @type {{ arg: string }} */ { arg }) => tool.loses.includes(arg);
    const isOther = (/** @type {{ arg: string }} */ named) => !isLost(named);
    const drivesOfCall = present(facts.namedDrives.filter(isLost).map((d) => d.partition));
    const containing = tool.losesWholeDisk ? drivesOfCall.map((p) => diskOf(p, facts)) : [];
    return {
        lostDisks: present([...facts.namedDisks.filter(isLost).map((d) => d.disk), ...containing]),
        lostDrives: tool.losesWholeDisk ? [] : drivesOfCall,
        otherDisks: present(facts.namedDisks.filter(isOther).map((d) => d.disk)),
        otherDrives: present(facts.namedDrives.filter(isOther).map((d) => d.partition)),
    };
}

/** The disk that contains a partition. @param {PlainRecord | undefined} partition @param {Facts} facts */
export const diskOf = (partition, facts) =>
    partition && facts.disks.find((disk) => disk.diskIndex === partition.diskIndex);

/** @param {Array<PlainRecord | undefined>} records @returns {PlainRecord[]} */
const present = (records) => records.filter((record) => record !== undefined);
