#pragma once

/// Takes the port's name, which one process at a time can hold and which goes with the process. Gives a
/// handle, or -1 if somebody holds it.
int lockPort(int port);
/// Gives the name back; harmless for -1.
void unlockPort(int lock);
