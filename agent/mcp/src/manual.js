import { readFileSync } from 'node:fs';

/** The version of this package. */
export const { version } = JSON.parse(readFileSync(new URL('../package.json', import.meta.url), 'utf8'));

/**
 * An option. The parser, --help and the manual page use the same table.
 * @typedef {object} Option
 * @property {string} name
 * @property {string} [short]
 * @property {string} [value] of an option with a value: its name
 * @property {boolean} [settable] a variable can set the option as well
 * @property {string} text
 */

/** @type {Option[]} */
export const optionTable = [
    {
        name: 'port',
        value: 'N',
        settable: true,
        text: "port of the application's agent service on this computer; default: AGENT_NATIVE_PORT, otherwise the first port from 9090 to 9153 on which it answers",
    },
    {
        name: 'tools',
        value: 'GROUP,...|all',
        settable: true,
        text: 'groups of tools to offer; default: inventory,partitions,disks',
    },
    { name: 'read-only', settable: true, text: 'offer only the tools that read' },
    { name: 'yes', settable: true, text: 'do not ask the user before a tool that destroys data' },
    { name: 'timeout', value: 'S', settable: true, text: 'time limit of a call, in seconds (30)' },
    {
        name: 'ask-timeout',
        value: 'S',
        settable: true,
        text: "time limit of the user's answer to a question, in seconds (300)",
    },
    { name: 'help', short: 'h', text: 'print this help' },
    { name: 'version', text: 'print the version' },
];

/** @param {string} name of an option @returns {string} */
export const variableOf = (name) => `AIBRIDGE_MCP_${name.toUpperCase().replace('-', '_')}`;

/** @param {Option} option */
const term = ({ name, short, value }) =>
    [short === undefined ? '' : `-${short}, `, `--${name}`, value === undefined ? '' : ` ${value}`].join('');

const settable = optionTable.filter((option) => option.settable);

/** The description of the program, in the form that the generator of the manual pages reads. */
export const manual = {
    program: 'aibridge-mcp',
    summary: 'Model Context Protocol gateway to the tools of a disk and partition manager',
    usage: [
        settable.map((option) => `[${term(option)}]`).join(' '),
        optionTable
            .filter((option) => !option.settable)
            .map((option) => `--${option.name}`)
            .join(' | '),
    ],
    description:
        'Uses the Model Context Protocol on standard input and output, and logs to standard error. An MCP client starts the program.',
    sections: [
        { title: 'Options', rows: optionTable.map((option) => ({ term: term(option), text: option.text })) },
        {
            title: 'Environment',
            rows: [
                ...settable.map(({ name }) => ({
                    term: variableOf(name),
                    text: `sets --${name} if it is not given`,
                })),
                {
                    term: 'AGENT_NATIVE_PORT',
                    text: 'port of the agent service, if neither --port nor its variable is given',
                },
            ],
        },
    ],
    seeAlso: ['zorcall', 'zorhost'],
};

const width = 100;

/** The text of --help. */
export function helpText() {
    const { program, usage, description, sections } = manual;
    return [
        ...usage.map((line, i) => `${i === 0 ? 'usage:' : '      '} ${program} ${line}`),
        '',
        ...wrapped(description, width),
        ...sections.flatMap(({ title, rows }) => ['', `${title}:`, ...rowLines(rows)]),
        '',
    ].join('\n');
}

/** @param {{ term: string, text: string }[]} rows */
function rowLines(rows) {
    const column = Math.max(...rows.map((row) => row.term.length)) + 4;
    return rows.flatMap((row) =>
        wrapped(row.text, width - column).map((line, i) => `  ${i === 0 ? row.term : ''}`.padEnd(column) + line),
    );
}

/** The lines of a text of at most so many columns. @param {string} text @param {number} columns */
function wrapped(text, columns) {
    return text.split(' ').reduce((/** @type {string[]} */ lines, word) => {
        const last = lines.at(-1);
        if (last === undefined || last.length + 1 + word.length > columns) return [...lines, word];
        return [...lines.slice(0, -1), `${last} ${word}`];
    }, []);
}
