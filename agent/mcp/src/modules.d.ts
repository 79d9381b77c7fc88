// The Thrift runtime and its 64-bit numbers come without types.
declare module 'thrift';
declare module 'node-int64';
