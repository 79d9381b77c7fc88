import assert from 'node:assert/strict';
import { test } from 'node:test';
import { loadTable } from '../src/table.js';
import { countTokens } from '../src/tokens.js';
import { connect } from './support/client.js';

test('WholeToolList_CostsAtMost9000Tokens', async (t) => {
    const { client } = await connect(t, { args: ['--tools', 'all'] });
    const { tools } = await client.listTools();
    assert.equal(tools.length, loadTable().tools.length);
    assert.ok(countTokens(JSON.stringify(tools)) <= 9000, `${countTokens(JSON.stringify(tools))}`);
});

test('DefaultToolList_CostsAtMost5000Tokens', async (t) => {
    const { client } = await connect(t);
    const { tools } = await client.listTools();
    assert.ok(tools.length > 20);
    assert.ok(countTokens(JSON.stringify(tools)) <= 5000, `${countTokens(JSON.stringify(tools))}`);
});

test('Count_IsTheLargerOfBytesAndPieces', () => {
    assert.equal(countTokens(''), 0);
    assert.equal(countTokens('abcdefgh'), 2);
    assert.equal(countTokens('a b c d e'), 5);
    assert.equal(countTokens('1234567'), 3);
    assert.equal(countTokens('aBcD'), 3);
});
