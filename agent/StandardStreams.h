#pragma once

namespace zorcall {

/// Disables the translation of line ends, and of the end-of-file character, on the standard streams.
void useBinaryStreams();

} // namespace zorcall
