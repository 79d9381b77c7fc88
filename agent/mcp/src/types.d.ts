/** A type of the interface: a plain one, a record by its name, or a list of one. */
export type WireType = 'bool' | 'i32' | 'i64' | 'string' | { record: string } | { list: WireType };

export interface Field {
    name: string;
    type: WireType;
    /** What the interface file says about it, on one line. */
    about: string;
}

/** What a tool does at most: read the inventory, open a page, change data, destroy data. */
export type ToolClass = 'reads' | 'opens' | 'changes' | 'destroys';

export interface Tool {
    name: string;
    title: string;
    group: string;
    class: ToolClass;
    /** A second call with the same arguments changes nothing more. */
    repeatable: boolean;
    about: string;
    args: Field[];
    result: WireType;
}

export interface Table {
    tools: Tool[];
    groups: Record<string, { about: string; default: boolean }>;
    records: Record<string, Field[]>;
    /** Every method of the service, the gate's too, in the interface's order. */
    methods: string[];
    /** The methods that make up the gate; they are not tools. */
    gate: string[];
}

/** A record or an answer as it goes to the client: 64-bit numbers are decimal texts. */
export type Plain = null | boolean | number | string | Plain[] | { [name: string]: Plain };
export type PlainRecord = { [name: string]: any };

export interface Options {
    /** The host's port when it is said; undefined: search. */
    port: number | undefined;
    /** Where the port comes from, for messages. */
    portSaidBy: string;
    /** First port of the search, and how many are tried. */
    searchFrom: number;
    searchCount: number;
    /** The longest that one call may take, in milliseconds. */
    timeoutMs: number;
    /** The longest wait for the user's answer to a question, in milliseconds. */
    askTimeoutMs: number;
    /** Never ask before a tool that destroys. */
    yes: boolean;
    readOnly: boolean;
    /** The groups that are offered; undefined: the default ones. */
    groups: string[] | undefined;
    help: boolean;
}

export type Log = (text: string) => void;
export type Progress = (text: string) => void;

/** One call from a client: when it must have ended, whether the client still wants it, and how to keep it informed. */
export interface CallScope {
    deadline: import('./time.js').Deadline;
    signal: AbortSignal;
    progress: Progress;
}
