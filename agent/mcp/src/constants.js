import definitions from '../generated/ZORNativePlugin_types.js';

/** The answers and the gate's sentences, defined in the interface file. @type {Record<string, string>} */
export const { TASK_QUEUED, TASK_NOT_VALID, OPERATION_IN_PROGRESS, TASKS_IN_EXECUTION } = definitions;
