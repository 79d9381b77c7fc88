#include "agent/Completion.h"

#include "agent/Failure.h"
#include "agent/OptionTable.h"
#include "agent/RecordTable.h"
#include "agent/Text.h"
#include "agent/Words.h"

#include <QtCore/QFile>

#include <algorithm>
#include <ostream>

namespace zorcall {

namespace {

const char* const kShells[] = {"bash", "zsh"};

/// The words of an incomplete command line.
struct Line
{
    std::string method; ///< first word that is neither an option nor its value; also "watch", "completion"
    std::vector<std::string> given; ///< names of the arguments that are complete
    std::string current;
    LineAddress address;
    bool expectsValue = false; ///< the current word is the value of an option
    bool lists = false;        ///< --list or --help
};

const OptionRow* optionOf(const std::string& word)
{
    for (const OptionRow& row : optionTable()) {
        if (word == std::string("--") + row.name)
            return &row;
    }
    return nullptr;
}

void readWord(const std::string& word, const std::string& previous, Line* line)
{
    const OptionRow* option = optionOf(previous);
    if (option != nullptr && option->takesValue()) {
        if (previous == "--host")
            line->address.host = word;
        if (previous == "--port")
            line->address.port = word;
    } else if (word == "--list" || word == "--help" || word == "-h") {
        line->lists = true;
    } else if (word.rfind('-', 0) != 0 && line->method.empty()) {
        line->method = word;
    } else if (word.find('=') != std::string::npos) {
        line->given.push_back(word.substr(0, word.find('=')));
    }
}

Line readLine(const std::string& text)
{
    std::vector<std::string> words = splitWords(text);
    if (text.empty() || text.back() == ' ' || text.back() == '\t')
        words.emplace_back();
    Line line;
    for (std::size_t i = 1; i + 1 < words.size(); ++i)
        readWord(words[i], words[i - 1], &line);
    line.current = words.back();
    const OptionRow* option = words.size() > 1 ? optionOf(words[words.size() - 2]) : nullptr;
    line.expectsValue = option != nullptr && option->takesValue();
    return line;
}

std::vector<Candidate> options()
{
    std::vector<Candidate> candidates;
    for (const OptionRow& row : optionTable())
        candidates.push_back({std::string("--") + row.name, row.help});
    return candidates;
}

std::vector<Candidate> methods(const Catalogue& catalogue, bool withCommands)
{
    std::vector<Candidate> candidates;
    for (const Tool& tool : catalogue.tools())
        candidates.push_back({tool.method->name, tool.toolClass + ": " + tool.summary()});
    if (withCommands) {
        candidates.push_back({"watch", "print each difference of the inventory"});
        candidates.push_back({"completion", "print the completion script of a shell"});
    }
    return candidates;
}

std::vector<Candidate> argumentNames(const Method& method, const std::vector<std::string>& given)
{
    std::vector<Candidate> candidates;
    for (const Field& field : method.arguments) {
        if (std::find(given.begin(), given.end(), field.name) == given.end())
            candidates.push_back({field.name + '=', field.type.name() + ": " + field.doc});
    }
    return candidates;
}

std::vector<Candidate> drives(const Interface& service, const Snapshot& snapshot)
{
    std::vector<Candidate> candidates;
    for (const Value& value : snapshot.entries.parts()) {
        const RecordView entry(service.record("PartitionInfo"), value);
        const std::string drive = driveName(entry);
        if (!drive.empty())
            candidates.push_back({drive.substr(0, 1), entry.text("label") + ", " +
                                                          entry.text("fileSystemType") + ", " +
                                                          entry.text("displayRawCapacity")});
    }
    return candidates;
}

std::vector<Candidate> disks(const Interface& service, const Snapshot& snapshot)
{
    std::vector<Candidate> candidates;
    for (const Value& value : snapshot.disks.parts()) {
        const RecordView disk(service.record("DiskInfo"), value);
        candidates.push_back({std::to_string(disk.integer("diskIndex")),
                              disk.text("diskLabel") + ", " + disk.text("displayTotalCapacity")});
    }
    return candidates;
}

std::vector<Candidate> values(const Catalogue& catalogue, const Interface& service, const Field& argument,
                              const Line& line, const InventoryReader& read)
{
    if (argument.type.kind == Kind::Bool)
        return {{"true", {}}, {"false", {}}};
    const std::string role = catalogue.role(argument.name);
    if (role == "drive" || role == "disk") {
        const std::optional<Snapshot> snapshot = read(line.address);
        if (!snapshot)
            return {};
        return role == "drive" ? drives(service, *snapshot) : disks(service, *snapshot);
    }
    std::vector<Candidate> candidates;
    for (const std::string& value : catalogue.suggestions(argument.name))
        candidates.push_back({value, {}});
    return candidates;
}

// Each candidate is a whole word: "driveLetter=C".
std::vector<Candidate> argumentValues(const Catalogue& catalogue, const Interface& service,
                                      const Method& method, const Line& line, const InventoryReader& read)
{
    const std::string name = line.current.substr(0, line.current.find('='));
    for (const Field& field : method.arguments) {
        if (field.name != name)
            continue;
        std::vector<Candidate> candidates = values(catalogue, service, field, line, read);
        for (Candidate& candidate : candidates)
            candidate.word.insert(0, name + '=');
        return candidates;
    }
    return {};
}

std::vector<Candidate> candidatesOf(const Catalogue& catalogue, const Interface& service, const Line& line,
                                    const InventoryReader& read)
{
    if (line.expectsValue)
        return {};
    if (line.current.rfind('-', 0) == 0)
        return options();
    if (line.method.empty())
        return methods(catalogue, !line.lists);
    if (line.method == "completion")
        return {{"bash", {}}, {"zsh", {}}};
    const Method* method = service.method(line.method);
    if (method == nullptr || line.lists)
        return {};
    if (line.current.find('=') != std::string::npos)
        return argumentValues(catalogue, service, *method, line, read);
    return argumentNames(*method, line.given);
}

} // namespace

std::string completionScript(const std::string& shell)
{
    if (std::find(std::begin(kShells), std::end(kShells), shell) == std::end(kShells))
        throw Failure(Usage, "completion requires the name of a shell: bash or zsh");
    // Also registers the resources.
    Interface::builtIn();
    QFile file(QStringLiteral(":/zorcall/zorcall.") + QString::fromStdString(shell));
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("the built-in completion is missing");
    return file.readAll().toStdString();
}

std::vector<Candidate> completeLine(const Catalogue& catalogue, const Interface& service,
                                    const std::string& line, const InventoryReader& read)
{
    const Line words = readLine(line);
    std::vector<Candidate> candidates = candidatesOf(catalogue, service, words, read);
    const auto isOther = [&](const Candidate& candidate) {
        return candidate.word.compare(0, words.current.size(), words.current) != 0;
    };
    candidates.erase(std::remove_if(candidates.begin(), candidates.end(), isOther), candidates.end());
    return candidates;
}

void writeCandidates(std::ostream& out, const std::vector<Candidate>& candidates)
{
    for (const Candidate& candidate : candidates) {
        const QString text = QString::fromStdString(candidate.text).simplified();
        out << oneLine(candidate.word) << '\t' << oneLine(text.toStdString()) << '\n';
    }
}

} // namespace zorcall
