#!/usr/bin/env node
import { runOnStdio } from '../src/stdio.js';

await runOnStdio(process.argv.slice(2), process.env);
