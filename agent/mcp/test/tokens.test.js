import assert from 'node:assert/strict';
import { test } from 'node:test';
import { ownTools } from '../src/gateway.js';
import { loadTable } from '../src/table.js';
import { connect } from './support/client.js';
import { countTokens } from './support/tokens.js';

test('WholeToolList_CostsAtMost9000Tokens', async (t) => {
    const { client } = await connect(t, { args: ['--tools', 'all'] });
    const { tools } = await client.listTools();
    assert.equal(tools.length, loadTable().tools.length + ownTools.length);
    assert.ok(countTokens(tools) <= 9000, `${countTokens(tools)}`);
});

test('DefaultToolList_CostsAtMost5000Tokens', async (t) => {
    const { client } = await connect(t);
    const { tools } = await client.listTools();
    assert.ok(tools.length > 20);
    assert.ok(countTokens(tools) <= 5000, `${countTokens(tools)}`);
});

test('Count_IsThatOfTheVocabulary', () => {
    assert.equal(countTokens(''), 0);
    assert.equal(countTokens('ListAllDisks'), 4);
    assert.equal(countTokens('9007199254740993'), 6);
    assert.equal(countTokens({ a: 1 }), 5);
});
