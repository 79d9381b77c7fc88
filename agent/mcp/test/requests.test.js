// Ten requests of users on the sandbox host, from the first read to the end state.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { carryOut } from './support/conversation.js';
import { requests } from './support/requests.js';

for (const request of requests)
    test(request.name, async (t) => {
        const { made } = await carryOut(t, request);
        assert.ok(made.length <= request.mostCalls, made.map(({ name }) => name).join(', '));
    });
