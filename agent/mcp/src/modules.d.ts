// These packages contain no type declarations.
declare module 'thrift';
declare module 'node-int64';
