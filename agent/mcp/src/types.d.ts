/** A type of the interface: a simple type, a record by its name, or a list. */
export type WireType = 'bool' | 'i32' | 'i64' | 'string' | { record: string } | { list: WireType };

export interface Field {
    name: string;
    type: WireType;
    /** Its comment in the interface file, on one line. */
    about: string;
}

/** The kind of value that an argument takes. */
export type Role =
    | 'drive'
    | 'newLetter'
    | 'disk'
    | 'region'
    | 'size'
    | 'clusterSize'
    | 'fileSystem'
    | 'label'
    | 'switch'
    | 'passes'
    | 'count'
    | 'style';

/** An argument of a tool, with the facts of tools.json. */
export interface Argument extends Field {
    role: Role;
    unit?: 'bytes';
    minimum?: number;
    maximum?: number;
    /** The value that leaves the choice to the host. */
    automatic?: number;
    /** The only accepted values. */
    values?: string[];
    /** The usual values. The host decides which others it accepts. */
    suggestions?: string[];
    /** Limits for the model, in addition to the comment. */
    note?: string;
    /** The name of the argument makes its comment redundant. */
    obvious?: boolean;
    mayBeEmpty?: boolean;
}

/**
 * The effect of a tool: reads the inventory; opens a page and changes nothing by itself; only adds; changes existing
 * objects without losing data; can lose data, so that the user is asked first.
 */
export type ToolClass = 'reads' | 'opens' | 'adds' | 'changes' | 'destroys';

export interface Tool {
    name: string;
    title: string;
    group: string;
    class: ToolClass;
    /** The reason for the class, a sentence. */
    reason: string;
    /** A repeated call with the same arguments has no further effect. */
    repeatable: boolean;
    /** The arguments whose disk or drive loses its data. */
    loses: string[];
    /** The whole disk of a drive in loses is lost. */
    losesWholeDisk: boolean;
    /** The page that the tool opens and the user's part, in sentences; undefined if the tool opens no page. */
    onScreen: string | undefined;
    about: string;
    args: Argument[];
    result: WireType;
}

export interface Table {
    tools: Tool[];
    groups: Record<string, { about: string; default: boolean }>;
    records: Record<string, Field[]>;
    /** All methods of the service including the gate's, in the interface's order. */
    methods: string[];
    /** The methods of the gate, which are not tools. */
    gate: string[];
}

/** A record or an answer for the client: 64-bit integers are decimal strings. */
export type Plain = null | boolean | number | string | Plain[] | { [name: string]: Plain };
export type PlainRecord = { [name: string]: any };

export interface Options {
    /** The configured port of the host; undefined: search. */
    port: number | undefined;
    /** Name of the option or variable with the port, for messages. */
    portSource: string;
    /** First port and number of ports of the search. */
    searchFrom: number;
    searchCount: number;
    /** Time limit of one call, in milliseconds. */
    timeoutMs: number;
    /** Time limit of the user's answer to a question, in milliseconds. */
    askTimeoutMs: number;
    /** Never ask before a tool that destroys data. */
    yes: boolean;
    readOnly: boolean;
    /** The offered groups; undefined: the default groups. */
    groups: string[] | undefined;
    help: boolean;
    version: boolean;
}

export type Log = (text: string) => void;
export type Progress = (text: string) => void;

/** One call of a client: its deadline, its cancellation and its progress notifications. */
export interface CallScope {
    deadline: import('./time.js').Deadline;
    signal: AbortSignal;
    progress: Progress;
    /** The host of this call since its first connection; the call does not continue on another one. */
    host?: HostId;
}

/** Identifies a running host. */
export interface HostId {
    port: number;
    /** The program that listens on the port, as the operating system identifies it; undefined if it does not. */
    program: string | undefined;
}
