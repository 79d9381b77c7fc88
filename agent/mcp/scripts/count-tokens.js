// Prints the token cost of the tool list for each group, counted with an exact tokenizer.
import { Gateway } from '../src/gateway.js';
import { instructions } from '../src/instructions.js';
import { readOptions } from '../src/options.js';
import { listed } from '../src/schema.js';
import { loadTable } from '../src/table.js';
import { countTokens } from '../test/support/tokens.js';

const table = loadTable();
const groups = Object.keys(table.groups);

/** @param {string} name @param {string[]} argv */
function row(name, argv) {
    const { tools } = new Gateway(readOptions(argv, {}, groups));
    const tokens = countTokens(tools.map((tool) => listed(tool, table)));
    console.log(
        `${name.padEnd(14)}${String(tools.length).padStart(6)}${String(tokens).padStart(9)}${String(countTokens(instructions(table, tools))).padStart(14)}`,
    );
}

console.log(
    `${'groups'.padEnd(14)}${'tools'.padStart(6)}${'tokens'.padStart(9)}${'instructions'.padStart(14)}`,
);
for (const group of groups) row(group, ['--tools', group]);
row('(default)', []);
row('all', ['--tools', 'all']);
