#include "agent/Display.h"

namespace zorcall {

namespace {

const char* sequence(Ink ink)
{
    switch (ink) {
    case Ink::Plain:
        return "";
    case Ink::Bold:
        return "\033[1m";
    case Ink::Dim:
        return "\033[2m";
    case Ink::Red:
        return "\033[31m";
    case Ink::Green:
        return "\033[32m";
    case Ink::Yellow:
        return "\033[33m";
    case Ink::Cyan:
        return "\033[36m";
    }
    return "";
}

} // namespace

std::string painted(const std::string& text, Ink ink, const Display& display)
{
    if (!display.colour || ink == Ink::Plain || text.empty())
        return text;
    return sequence(ink) + text + "\033[0m";
}

} // namespace zorcall
