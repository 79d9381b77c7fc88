import { serveStdio } from '@modelcontextprotocol/server/stdio';
import { Gateway, offered } from './gateway.js';
import { readOptions, usage, version } from './options.js';
import { loadTable } from './table.js';

// Time for the PostProcessing of a running tool after the client has disconnected.
const shutdownMs = 1000;

/** @param {string} text */
const log = (text) => process.stderr.write(`aibridge-mcp: ${text}\n`);

/**
 * Serves one client on standard input and output, and exits when it disconnects.
 * @param {string[]} argv
 * @param {NodeJS.ProcessEnv} env
 */
export async function runOnStdio(argv, env) {
    const options = optionsOrExit(argv, env);
    const gateway = new Gateway(options, log);
    let ending = false;
    /** @param {string} reason */
    const end = async (reason) => {
        if (ending) return;
        ending = true;
        log(`exiting: ${reason}`);
        await gateway.close(shutdownMs);
        process.exit(0);
    };
    process.stdin.on('end', () => end('the client closed standard input'));
    process.stdin.on('close', () => end('the client closed standard input'));
    process.stdout.on('error', () => end('the client closed standard output'));
    for (const signal of ['SIGINT', 'SIGTERM', 'SIGHUP']) process.on(signal, () => end(signal));
    serveStdio(() => gateway.server(), { onerror: (error) => log(error.message) });
    log(
        `${gateway.tools.length} tools; ${options.port === undefined ? 'the first call searches for the application' : `the application is expected on port ${options.port}`}`,
    );
}

/** @param {string[]} argv @param {NodeJS.ProcessEnv} env */
function optionsOrExit(argv, env) {
    try {
        const options = readOptions(argv, env, Object.keys(loadTable().groups));
        if (!options.help && !options.version) return withTools(options);
        process.stdout.write(options.help ? usage : `aibridge-mcp ${version}\n`);
        process.exit(0);
    } catch (error) {
        process.stderr.write(`aibridge-mcp: ${/** @type {Error} */ (error).message}\n${usage}`);
        process.exit(2);
    }
}

/** Rejects options that exclude every tool. @param {import('./types.js').Options} options */
function withTools(options) {
    if (offered(loadTable(), options).length > 0) return options;
    throw new Error(
        `--read-only and --tools ${options.groups?.join(',')} exclude every tool: only the group inventory contains tools that read.`,
    );
}
