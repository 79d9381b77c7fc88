#include "manual/Manual.h"

namespace manual {

namespace {

std::string upper(std::string text)
{
    for (char& c : text) {
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    }
    return text;
}

// An unescaped hyphen could be printed as another character, which cannot be pasted into a shell. A line that
// begins with a dot or an apostrophe would be a request.
std::string escaped(const std::string& text)
{
    std::string result = text.find_first_of(".'") == 0 ? "\\&" : "";
    for (const char c : text) {
        if (c == '\\')
            result += "\\e";
        else if (c == '-')
            result += "\\-";
        else if (c == '\'')
            result += "\\(aq";
        else
            result += c == '\n' ? ' ' : c;
    }
    return result;
}

// A quoted argument of a macro.
std::string argument(const std::string& text)
{
    std::string quoted;
    for (const char c : escaped(text))
        quoted += c == '"' ? std::string("\\(dq") : std::string(1, c);
    return '"' + quoted + '"';
}

std::string usageLines(const Manual& manual)
{
    std::string lines;
    for (const std::string& usage : manual.usage)
        lines += (lines.empty() ? "" : ".br\n") + std::string(".B ") + escaped(manual.program) + '\n' +
                 escaped(usage) + '\n';
    return lines;
}

std::string seeAlso(const Manual& manual)
{
    std::string lines;
    for (const std::string& program : manual.seeAlso)
        lines += ".BR " + escaped(program) + " (1)" + (&program == &manual.seeAlso.back() ? "\n" : " ,\n");
    return lines.empty() ? lines : ".SH SEE ALSO\n" + lines;
}

} // namespace

std::string manualPage(const Manual& manual, const std::string& version)
{
    std::string page = ".TH " + argument(upper(manual.program)) + " 1 \"\" " +
                       argument(manual.program + ' ' + version) + " \"User Commands\"\n" + ".SH NAME\n" +
                       escaped(manual.program) + " \\- " + escaped(manual.summary) + "\n.SH SYNOPSIS\n" +
                       usageLines(manual) + ".SH DESCRIPTION\n" + escaped(manual.description) + '\n';
    for (const Section& section : manual.sections) {
        page += ".SH " + argument(upper(section.title)) + '\n';
        for (const Row& row : section.rows)
            page += ".TP\n.B " + argument(row.term) + '\n' + escaped(row.text) + '\n';
    }
    return page + seeAlso(manual);
}

} // namespace manual
