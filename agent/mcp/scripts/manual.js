// Prints the description of the gateway as JSON, from which the build generates its manual page.
//
//     node scripts/manual.js
import { manual, version } from '../src/manual.js';

process.stdout.write(`${JSON.stringify({ ...manual, version }, undefined, 4)}\n`);
