import { unquoted } from './quote.js';

const units = ['KB', 'MB', 'GB', 'TB'];

/** A size as the host displays it, in powers of 1024: "300.00 GB". @param {bigint} bytes */
export function sizeWords(bytes) {
    let unit = -1;
    let value = Number(bytes < 0n ? -bytes : bytes);
    while (value >= 1024 && unit < units.length - 1) {
        value /= 1024;
        unit++;
    }
    return unit < 0 ? byteWords(bytes) : `${bytes < 0n ? '-' : ''}${value.toFixed(2)} ${units[unit]}`;
}

/** A display string of the host, with its "0 Byte" as a plural. @param {string} display */
export const displayed = (display) =>
    /^\d+ Byte$/.test(display) ? byteWords(BigInt(display.slice(0, -' Byte'.length))) : unquoted(display);

/** @param {bigint} bytes */
const byteWords = (bytes) => `${bytes} ${bytes === 1n ? 'byte' : 'bytes'}`;
