import { serveStdio } from '@modelcontextprotocol/server/stdio';
import { Gateway } from './gateway.js';
import { readOptions, usage } from './options.js';
import { loadTable } from './table.js';

// How long a call that is under way may still take when the client has gone, so that the host gets its PostProcessing.
const farewellMs = 1000;

/** @param {string} text */
const log = (text) => process.stderr.write(`aibridge-mcp: ${text}\n`);

/**
 * The whole program: serves one client on standard input and output, and ends with it.
 * @param {string[]} argv
 * @param {NodeJS.ProcessEnv} env
 */
export async function runOnStdio(argv, env) {
    const options = optionsOrExit(argv, env);
    const gateway = new Gateway(options, log);
    let ending = false;
    /** @param {string} why */
    const end = async (why) => {
        if (ending) return;
        ending = true;
        log(`ending: ${why}`);
        await gateway.close(farewellMs);
        process.exit(0);
    };
    process.stdin.on('end', () => end('the client closed standard input'));
    process.stdin.on('close', () => end('the client closed standard input'));
    process.stdout.on('error', () => end('the client closed standard output'));
    for (const signal of ['SIGINT', 'SIGTERM', 'SIGHUP']) process.on(signal, () => end(signal));
    serveStdio(() => gateway.server(), { onerror: (error) => log(error.message) });
    log(
        `${gateway.tools.length} tools; ${options.port === undefined ? 'the application is looked for when it is needed' : `the application is expected on port ${options.port}`}`,
    );
}

/** @param {string[]} argv @param {NodeJS.ProcessEnv} env */
function optionsOrExit(argv, env) {
    try {
        const options = readOptions(argv, env, Object.keys(loadTable().groups));
        if (!options.help) return options;
        process.stderr.write(usage);
        process.exit(0);
    } catch (error) {
        process.stderr.write(`aibridge-mcp: ${/** @type {Error} */ (error).message}\n${usage}`);
        process.exit(2);
    }
}
