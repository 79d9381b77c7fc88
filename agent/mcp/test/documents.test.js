// The documents for users agree with the program.
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { readdirSync, readFileSync } from 'node:fs';
import { test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { readOptions, settable, variableOf } from '../src/options.js';
import { loadTable } from '../src/table.js';
import { connect, program } from './support/client.js';

/** @param {string} path */
const file = (path) => readFileSync(new URL(path, import.meta.url), 'utf8');
const groupNames = Object.keys(loadTable().groups);

test('ToolReference_IsTheOneThatTheProgramGenerates', () => {
    const script = fileURLToPath(new URL('../scripts/reference.js', import.meta.url));
    const { stdout, status } = spawnSync(process.execPath, [script, '--print'], { encoding: 'utf8' });
    assert.equal(status, 0);
    assert.ok(stdout === file('../../../docs/mcp-tools.md'), 'Run "npm run reference" in agent/mcp.');
    for (const tool of loadTable().tools) assert.ok(stdout.includes(`\n### ${tool.name}\n`), tool.name);
});

const onWindows = 'C:\\AIBridge\\package\\dist\\aibridge-mcp.js';
/** The key above the entries, as each client's documentation gives it. @type {Record<string, string>} */
const topLevelKeys = {
    'Claude Desktop': 'mcpServers',
    'Claude Code': 'mcpServers',
    Cursor: 'mcpServers',
    'Visual Studio Code': 'servers',
    'Visual Studio': 'servers',
    'GitHub Copilot CLI': 'mcpServers',
    Windsurf: 'mcpServers',
    Cline: 'mcpServers',
    'JetBrains AI Assistant': 'mcpServers',
    Zed: 'context_servers',
    'LM Studio': 'mcpServers',
    'Gemini CLI': 'mcpServers',
    Codex: 'mcp_servers',
    Goose: 'extensions',
};

/** The name, language and text of each client's configuration. */
function snippets() {
    return file('../../../docs/mcp-clients.md')
        .split('\n## ')
        .slice(1)
        .map((section) => {
            const [, language, text] = /```(\w+)\n(.*?)```/s.exec(section) ?? [];
            return { client: section.split('\n')[0], language, text };
        });
}

/** The top-level key, the command and the arguments. @param {string} language @param {string} text */
function parse(language, text) {
    if (language === 'json') {
        const [[key, servers]] = Object.entries(JSON.parse(text));
        return { key, command: servers.disks.command, args: servers.disks.args };
    }
    // The lines of these TOML and YAML examples have JSON values.
    const value = (/** @type {RegExp} */ line) => line.exec(text)?.[1] ?? '';
    return {
        key: value(language === 'toml' ? /^\[(\w+)\.disks\]/m : /^(\w+):\n {2}disks:/m),
        command: value(/^ *(?:command = "|cmd: )(\w+)/m),
        args: JSON.parse(value(/^ *args(?: =|:) (\[.*\])$/m)),
    };
}

test('ClientSnippets_CoverADozenClientsWithTheirKeys', () => {
    const all = snippets();
    assert.deepEqual(
        all.map(({ client }) => client),
        Object.keys(topLevelKeys),
    );
    assert.ok(all.length >= 12);
    for (const { client, language, text } of all) {
        const { key, command, args } = parse(language, text);
        assert.equal(key, topLevelKeys[client], client);
        assert.deepEqual([command, args[0]], ['node', onWindows], client);
        readOptions(args.slice(1), {}, groupNames);
    }
});

test('ClientSnippets_StartTheGateway', async (t) => {
    const { language, text } = snippets()[0];
    const [path, ...args] = parse(language, text).args;
    const { client } = await connect(t, { program: path.replace(onWindows, program), args });
    assert.ok((await client.listTools()).tools.length > 20);
});

test('Options_AreDocumentedWithTheirVariables', () => {
    for (const path of ['../README.md', '../../../docs/mcp.md'])
        for (const name of settable) {
            assert.match(file(path), new RegExp(`^\\| \`--${name}\\b.*\`${variableOf(name)}\``, 'm'), `${path}: ${name}`);
        }
});

test('SecurityPage_StatesThatNoDataIsCollectedAndTheSourcesAgree', () => {
    assert.match(file('../../../docs/mcp-security.md'), /^The gateway collects no data\./m);
    const forbidden = ['node:http', 'node:https', 'node:http2', 'node:dgram', 'node:tls', 'node:dns'];
    for (const name of readdirSync(new URL('../src', import.meta.url), { recursive: true, encoding: 'utf8' })) {
        if (!name.endsWith('.js')) continue;
        const source = file(`../src/${name}`);
        const modules = [...source.matchAll(/from '(node:[^']+)'/g)].map((match) => match[1]);
        assert.deepEqual(modules.filter((one) => forbidden.includes(one)), [], name);
        // Files are only read, and no request leaves the computer.
        assert.doesNotMatch(source, /\b(writeFile|appendFile|createWriteStream|fetch\()/, name);
    }
});
