import { fromJsonSchema, isInputRequiredResult, McpServer } from '@modelcontextprotocol/server';
import { failed, notCalledAnswer, queuedAnswer, rejectedAnswer } from './answers.js';
import { causeOf } from './causes.js';
import { callConfirmed } from './confirm.js';
import { Consent } from './consent.js';
import { TASK_QUEUED } from './constants.js';
import { HostError } from './errors.js';
import { Gate } from './gate.js';
import { Host } from './host.js';
import { instructions } from './instructions.js';
import { factsAbout, readPartitions } from './inventory.js';
import { quoted, unquoted } from './quote.js';
import { version } from './options.js';
import { plan, planTool } from './plan.js';
import { cacheHints, capabilities } from './protocol.js';
import { readAnswer } from './reads.js';
import { offerResources } from './resources.js';
import { acceptAll, annotations, listed } from './schema.js';
import { loadTable } from './table.js';
import { Deadline } from './time.js';
import { ChangeWatch, waitTool } from './wait.js';
import { explainUnofferedTools } from './unoffered.js';
import { fromWire, ownArguments, requireBoolean, toWire } from './wire.js';

/** @import { CallToolResult, InputRequiredResult, ServerContext } from '@modelcontextprotocol/server' */
/** @import { HostConnection } from './connection.js' */
/** @import { Facts } from './inventory.js' */
/** @import { CallScope, Log, Options, PlainRecord, Tool } from './types.js' */

/** The tools of the gateway itself, which are not methods of the service. */
export const ownTools = [waitTool, planTool];

/**
 * The gateway between MCP clients and the host: one gate and one set of connections for all clients, and one server
 * per client. It connects to the host on the first call.
 */
export class Gateway {
    /** @param {Options} options @param {Log} [log] */
    constructor(options, log = () => {}) {
        this.options = options;
        this.log = log;
        this.table = loadTable();
        this.tools = offered(this.table, options);
        this.host = new Host(options, log);
        this.gate = new Gate(this.host, options, log);
        this.consent = new Consent(options);
        this.watch = new ChangeWatch(this.host, this.table, options);
    }

    /** Creates a server for one client, with the offered tools and the inventory's resources. */
    server() {
        const server = new McpServer(
            { name: 'aibridge-mcp', title: 'Disk and partition manager', version },
            {
                instructions: instructions(this.table, this.tools, this.options.readOnly),
                capabilities: { resources: capabilities.resources },
                cacheHints,
                requestState: { verify: this.consent.codec.verify },
            },
        );
        explainUnofferedTools(server, this.table, this.options);
        server.server.registerCapabilities({ tools: capabilities.tools });
        for (const tool of this.tools) this.offer(server, tool);
        this.offerOwn(server, waitTool, (args, scope) => this.watch.wait(args.seconds, scope));
        this.offerOwn(server, planTool, (args, scope, context) =>
            plan(this, args, (tool) => this.consent.needed(tool, server, context), scope),
        );
        offerResources(server, this.host, this.table, (context) => this.scope(context));
        return server;
    }

    /** Closes the connections to the host, after at most ms for the PostProcessing of a running tool. @param {number} [ms] */
    async close(ms = 0) {
        await this.gate.settled(ms);
        this.host.close();
    }

    /** @param {McpServer} server @param {Tool} tool */
    offer(server, tool) {
        const { name, inputSchema, outputSchema, ...shown } = listed(tool, this.table);
        const output = outputSchema && fromJsonSchema(/** @type {any} */ (outputSchema));
        server.registerTool(
            name,
            {
                ...shown,
                inputSchema: fromJsonSchema(/** @type {any} */ (inputSchema), acceptAll),
                ...(output && { outputSchema: output }),
            },
            (/** @type {any} */ args, /** @type {ServerContext} */ context) =>
                this.call(tool, args, server, context),
        );
    }

    /**
     * Offers a tool of the gateway itself: it reads, so every choice of groups includes it.
     * @param {McpServer} server
     * @param {typeof ownTools[number]} tool
     * @param {(args: PlainRecord, scope: CallScope, context: ServerContext) => Promise<CallToolResult>} run
     */
    offerOwn(server, tool, run) {
        const { name, inputSchema, outputSchema, ...shown } = tool;
        server.registerTool(
            name,
            {
                ...shown,
                inputSchema: fromJsonSchema(/** @type {any} */ (inputSchema), acceptAll),
                outputSchema: fromJsonSchema(/** @type {any} */ (outputSchema)),
                annotations: annotations(/** @type {any} */ ({ class: 'reads' })),
            },
            (/** @type {any} */ args, /** @type {ServerContext} */ context) =>
                this.reportingFailures(name, async () =>
                    run(ownArguments(tool, args ?? {}), this.scope(context), context),
                ),
        );
    }

    /**
     * Calls one tool. A failure becomes an answer with the next step for the model.
     * @param {Tool} tool
     * @param {PlainRecord} args
     * @param {McpServer} server
     * @param {ServerContext} context
     * @returns {Promise<CallToolResult | InputRequiredResult>}
     */
    async call(tool, args, server, context) {
        const scope = this.scope(context);
        return this.reportingFailures(tool.name, async () => {
            if (tool.class === 'reads') return await this.read(tool, args, scope);
            const wire = toWire(tool, args);
            if (this.consent.needed(tool, server, context))
                return await callConfirmed(this, { tool, args, wire, context });
            return await this.act(tool, args, wire, scope);
        });
    }

    /**
     * A failure of the host becomes an answer with the next step. A change of host is stated in the next answer.
     * @param {string} name of the tool
     * @param {() => Promise<CallToolResult | InputRequiredResult>} run
     * @returns {Promise<CallToolResult | InputRequiredResult>}
     */
    async reportingFailures(name, run) {
        try {
            return this.withNotice(await run());
        } catch (error) {
            if (!(error instanceof HostError)) throw error;
            this.log(`${name}: ${error.kind}: ${error.message}`);
            return this.withNotice(failed(error));
        }
    }

    /** @param {CallToolResult | InputRequiredResult} answer @returns {CallToolResult | InputRequiredResult} */
    withNotice(answer) {
        // A question goes to the user, not to the model.
        if (isInputRequiredResult(answer)) return answer;
        const notice = this.host.finder.takeNotice();
        return notice ? { ...answer, content: [...answer.content, { type: 'text', text: notice }] } : answer;
    }

    /** @param {Tool} tool @param {PlainRecord} args @param {CallScope} scope */
    async read(tool, args, scope) {
        const { allFields, ...sent } = args;
        requireBoolean(tool, 'allFields', allFields ?? false);
        const found = await this.host.ask(tool.name, toWire(tool, sent), scope);
        // After the record: a drive that disappears in between is not in the list.
        const partitions = ['ListAllDisks', 'GetPartitionInfo'].includes(tool.name)
            ? await readPartitions(this.host, this.table, scope)
            : [];
        return readAnswer(tool, args, fromWire(found, tool.result, this.table), partitions);
    }

    /**
     * Calls a tool that acts. The inventory is read between PreProcessing and the tool, so that neither the check nor
     * WaitForChange sees the effect of an earlier order as new.
     * @param {Tool} tool
     * @param {PlainRecord} args
     * @param {any[]} wire
     * @param {CallScope} scope
     * @param {(facts: Facts) => void} [check] throws if the tool must not be called
     */
    async act(tool, args, wire, scope, check) {
        // A confirmed call was checked before the question, and `check` compares its target.
        if (!check) {
            const facts = await factsAbout(this.host, this.table, tool, args, scope);
            const rejected = this.impossible(tool, args, facts);
            if (rejected) return rejected;
        }
        /** @type {Facts | undefined} */
        let before;
        const run = this.gate.run(tool.name, wire, callText(tool, args), scope, async (connection) => {
            before = await factsAbout(readerOn(connection, scope), this.table, tool, args, scope);
            check?.(before);
        });
        const answer = await run.catch((error) => {
            // A call that was sent and not answered can still have an effect.
            if (error instanceof HostError && error.kind === 'disconnected' && before)
                this.watch.addOrder(tool, args, before, scope.host);
            throw error;
        });
        this.log(`${tool.name}: ${answer}`);
        if (answer === TASK_QUEUED) {
            if (before) this.watch.addOrder(tool, args, before, scope.host);
            return queuedAnswer(tool, args, before, this.tools.some((one) => one.class === 'reads'));
        }
        // The rejection is reported even if the inventory cannot be read.
        const facts = await factsAbout(this.host, this.table, tool, args, scope).catch(() => undefined);
        return rejectedAnswer(tool, args, answer, facts);
    }

    /**
     * The answer if the inventory shows that the application cannot carry out the call: neither the application nor the
     * user is asked.
     * @param {Tool} tool
     * @param {PlainRecord} args
     * @param {Facts} facts
     */
    impossible(tool, args, facts) {
        const cause = causeOf(tool, args, facts);
        if (!cause?.certain) return undefined;
        this.log(`${tool.name}: not called: ${cause.check}`);
        return notCalledAnswer(tool, cause, this.watch.canChange(cause, tool, args, facts));
    }

    /** @param {ServerContext} [context] @returns {CallScope} */
    scope(context) {
        const token = context?.mcpReq._meta?.progressToken;
        let step = 0;
        /** @param {string} message */
        const progress = (message) => {
            if (context === undefined || token === undefined) return;
            context.mcpReq
                .notify({
                    method: 'notifications/progress',
                    params: { progressToken: token, progress: ++step, message },
                })
                .catch(() => {});
        };
        return {
            deadline: new Deadline(this.options.timeoutMs),
            signal: context?.mcpReq.signal ?? new AbortController().signal,
            progress,
        };
    }
}

/** Reads on a connection that the caller holds. @param {HostConnection} connection @param {CallScope} scope */
const readerOn = (connection, scope) => ({
    ask: (/** @type {string} */ method, /** @type {any[]} */ args) =>
        connection.call(method, args, scope.deadline.left(), scope.signal),
});

/** The tools that the options select. @param {import('./types.js').Table} table @param {Options} options */
export function offered(table, options) {
    const groups = options.groups ?? Object.keys(table.groups).filter((name) => table.groups[name].default);
    return table.tools.filter(
        (tool) => groups.includes(tool.group) && (!options.readOnly || tool.class === 'reads'),
    );
}

/** The argument of PreProcessing for a call; the host may show it. @param {Tool} tool @param {PlainRecord} args */
const callText = (tool, args) =>
    [tool.name, ...tool.args.map((arg) => `${arg.name}=${valueText(String(args[arg.name]))}`)].join(' ');

// In quotation marks, a text with spaces cannot look like a further argument.
/** @param {string} value */
const valueText = (value) => (/^[^\s"=]{1,64}$/.test(value) ? unquoted(value) : quoted(value));
