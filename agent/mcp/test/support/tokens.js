// Development only: the vocabulary has several megabytes.
import { countTokens as count } from 'gpt-tokenizer/encoding/o200k_base';

/** The exact number of tokens of a string, or of a value as JSON, in the vocabulary o200k_base. @param {unknown} value */
export const countTokens = (value) => count(typeof value === 'string' ? value : JSON.stringify(value));
