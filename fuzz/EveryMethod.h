#pragma once

#include <string>

class CZorHandle;

/// Calls every method of the interface. Integer arguments are @p disk and @p other in turn, strings are
/// @p letter and the letter of a partition of ToolHost::inventory in turn.
void callEveryMethod(CZorHandle& tools, int disk, int other, const std::string& letter);
