#include "agent/Display.h"

namespace zorcall {

namespace {

const char* sequence(Style style)
{
    switch (style) {
    case Style::Plain:
        return "";
    case Style::Bold:
        return "\033[1m";
    case Style::Dim:
        return "\033[2m";
    case Style::Red:
        return "\033[31m";
    case Style::Green:
        return "\033[32m";
    case Style::Yellow:
        return "\033[33m";
    case Style::Cyan:
        return "\033[36m";
    }
    return "";
}

} // namespace

std::string styled(const std::string& text, Style style, const Display& display)
{
    if (!display.colour || style == Style::Plain || text.empty())
        return text;
    return sequence(style) + text + "\033[0m";
}

} // namespace zorcall
