#include "agent/Words.h"

#include "agent/Failure.h"
#include "agent/Text.h"

namespace zorcall {

namespace {

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

class Splitter
{
public:
    explicit Splitter(const std::string& line) : line_(line) {}

    std::vector<std::string> run()
    {
        while (at_ < line_.size()) {
            if (isBlank(line_[at_]))
                ++at_;
            else if (line_[at_] == '#')
                break;
            else
                words_.push_back(word());
        }
        return words_;
    }

private:
    std::string word()
    {
        std::string text;
        while (at_ < line_.size() && !isBlank(line_[at_])) {
            const char c = line_[at_++];
            if (c == '\'' || c == '"')
                text += quotedPart(c);
            else if (c == '\\')
                text += escaped();
            else
                text += c;
        }
        return text;
    }

    std::string quotedPart(char quote)
    {
        std::string text;
        while (at_ < line_.size()) {
            const char c = line_[at_++];
            if (c == quote)
                return text;
            const bool escape =
                c == '\\' && quote == '"' && at_ < line_.size() && (line_[at_] == '"' || line_[at_] == '\\');
            text += escape ? line_[at_++] : c;
        }
        throw Failure(Usage, std::string("a quote (") + quote + ") is not closed");
    }

    char escaped()
    {
        if (at_ == line_.size())
            throw Failure(Usage, "a backslash ends the line");
        return line_[at_++];
    }

    const std::string& line_;
    std::size_t at_ = 0;
    std::vector<std::string> words_;
};

std::string quoteIfNeeded(const std::string& word)
{
    if (!word.empty() && word.find_first_of(" \t\r\n'\"\\#") == std::string::npos)
        return word;
    std::string quoted = "'";
    for (const char c : word)
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

} // namespace

std::vector<std::string> splitWords(const std::string& line)
{
    return Splitter(line).run();
}

std::string joinWords(const std::vector<std::string>& words)
{
    std::vector<std::string> quoted;
    quoted.reserve(words.size());
    for (const std::string& word : words)
        quoted.push_back(quoteIfNeeded(word));
    return join(quoted, " ");
}

} // namespace zorcall
