#pragma once

namespace zorcall {

/// Disables the translation of line ends, and of the end-of-file character, on the standard streams.
void useBinaryStreams();

/// Standard output is a terminal.
bool isTerminal();

/// Prepares the terminal of standard output for escape sequences. False if it cannot show them.
bool enableTerminalColour();

} // namespace zorcall
