import assert from 'node:assert/strict';
import { test } from 'node:test';
import { loadTable } from '../src/table.js';
import { fromWire, toWire } from '../src/wire.js';
import { int64, record } from './support/fakeService.js';

const table = loadTable();
const named = (/** @type {string} */ name) =>
    /** @type {import('../src/types.js').Tool} */ (table.tools.find((tool) => tool.name === name));
const resize = (/** @type {any} */ size) =>
    toWire(named('ResizePartitionRelative'), {
        driveLetter: 'E',
        sizeAdjustment: size,
    })[1].buffer.readBigInt64BE();

test('SizesInAnswers_KeepEveryDigit', () => {
    for (const digits of ['0', '1', '-1', '9007199254740993', '9223372036854775807', '-9223372036854775808'])
        assert.equal(
            fromWire(
                record('PartitionInfo', { rawCapacity: int64(digits) }),
                { record: 'PartitionInfo' },
                table,
            ).rawCapacity,
            digits,
        );
});

test('SizesInArguments_KeepEveryDigit', () => {
    assert.equal(resize('9223372036854775807'), 9223372036854775807n);
    assert.equal(resize('-9223372036854775808'), -9223372036854775808n);
    assert.equal(resize('9007199254740993'), 9007199254740993n);
    assert.equal(resize(10737418240), 10737418240n);
});

test('SizesBeyondTheDigitsOfAJsonNumber_AreRejected', () => {
    assert.throws(() => resize(9007199254740993), /send it as a decimal string/);
    assert.throws(() => resize('9223372036854775808'), /must be between/);
    assert.throws(() => resize(1.5), /whole number/);
    assert.throws(() => resize('10 GB'), /whole number/);
    assert.throws(() => resize(''), /whole number/);
});

test('IntegersOutsideTheirRange_AreRejected', () => {
    const stick = (/** @type {any} */ diskIndex) => toWire(named('CreateBootableUsbByDisk'), { diskIndex })[0];
    assert.deepEqual([stick(-1), stick(2147483647)], [-1, 2147483647]);
    assert.throws(
        () => stick(2147483648),
        /diskIndex must be between -1 and 2147483647/,
    );
});

test('DriveLetterOtherThanASingleLetter_IsRejected', () => {
    const label = (/** @type {string} */ driveLetter) =>
        toWire(named('ChangePartitionLabel'), { driveLetter, newLabel: '' })[0];
    assert.equal(label('e'), 'e');
    assert.equal(label('E:'), 'E:');
    assert.equal(label('E:\\'), 'E:\\');
    for (const invalid of ['Data', '', '1', '*', 'EF', 'E:/x'])
        assert.throws(() => label(invalid), /must be one letter/, invalid);
});

test('DriveLetterThatMayBeEmpty_IsAcceptedEmpty', () => {
    assert.deepEqual(toWire(named('CreateBootableUsbByDriveLetter'), { driveLetter: '' }), ['']);
});

test('MissingOrUnknownArguments_AreRejected', () => {
    assert.throws(() => toWire(named('WipeDisk'), { diskIndex: 1 }), /eraseCount is missing/);
    assert.throws(() => toWire(named('WipeDisk'), {}), /WipeDisk was not called: diskIndex and eraseCount are missing\.$/);
    assert.throws(
        () => toWire(named('FormatPartition'), { driveLetter: 'E', label: null }),
        /: fileSystem, label, clusterSize and quickFormat are missing\.$/,
    );
    assert.throws(
        () => toWire(named('WipeDisk'), { diskIndex: 1, eraseCount: 1, force: true }),
        /no argument "force"/,
    );
});

test('Arguments_AreSentInTheOrderOfTheInterface', () => {
    const args = { quickFormat: true, clusterSize: 0, label: 'ü', fileSystem: 'NTFS', driveLetter: 'E' };
    assert.deepEqual(toWire(named('FormatPartition'), args), ['E', 'NTFS', 'ü', 0, true]);
});
