#pragma once

namespace zorcall {

/// Disables the translation of line ends, and of the end-of-file character, on the standard streams.
void useBinaryStreams();

/// True if standard output is a terminal.
bool isTerminal();

/// Enables escape sequences on the terminal of standard output. False if it does not support them.
bool enableTerminalColour();

} // namespace zorcall
