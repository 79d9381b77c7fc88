#include "agent/Call.h"

#include "agent/Failure.h"
#include "agent/Text.h"
#include "agent/Words.h"

#include <charconv>
#include <limits>

namespace zorcall {

namespace {

[[noreturn]] void reject(const std::string& message)
{
    throw Failure(Usage, message);
}

std::string quoted(const std::string& text)
{
    return "'" + oneLine(text) + "'";
}

template <class Integer> Value parseInteger(const Field& field, const std::string& text)
{
    Integer number = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error == std::errc::result_out_of_range && stop == end)
        reject("argument '" + field.name + "': " + quoted(text) + " is out of the range of " +
               field.type.name() + ", " + std::to_string(std::numeric_limits<Integer>::min()) + " to " +
               std::to_string(std::numeric_limits<Integer>::max()));
    if (error != std::errc() || stop != end)
        reject("argument '" + field.name + "': " + quoted(text) + " is not a whole number");
    return Value{static_cast<std::int64_t>(number)};
}

Value parseBool(const Field& field, const std::string& text)
{
    if (text != "true" && text != "false")
        reject("argument '" + field.name + "': " + quoted(text) + " is neither true nor false");
    return Value{text == "true"};
}

std::size_t argumentIndex(const Method& method, const std::string& name)
{
    std::vector<std::string> names;
    for (const Field& field : method.arguments) {
        if (field.name == name)
            return names.size();
        names.push_back(field.name);
    }
    if (names.empty())
        reject(method.name + " takes no arguments, but " + quoted(name) + " is given");
    const std::vector<std::string> similar = nearest(name, names);
    reject(method.name + " has no argument " + quoted(name) +
           (similar.empty() ? "; its arguments: " + join(names, ", ") : "; nearest: " + join(similar, ", ")));
}

void readArgument(Call* call, const std::string& word)
{
    const std::size_t equals = word.find('=');
    if (equals == std::string::npos)
        reject(quoted(word) + " is not of the form name=value");
    const std::size_t index = argumentIndex(*call->method, word.substr(0, equals));
    const Field& field = call->method->arguments[index];
    if (!call->arguments[index].absent())
        reject("argument '" + field.name + "' is given twice");
    call->arguments[index] = parseValue(field, word.substr(equals + 1));
}

void requireAll(const Call& call)
{
    std::vector<std::string> missing;
    for (std::size_t i = 0; i < call.arguments.size(); ++i) {
        if (call.arguments[i].absent())
            missing.push_back(call.method->arguments[i].name);
    }
    if (!missing.empty())
        reject(call.method->name + " requires " + join(missing, ", ") +
               " (--allow-missing omits missing arguments)");
}

} // namespace

Value parseValue(const Field& field, const std::string& text)
{
    switch (field.type.kind) {
    case Kind::Bool:
        return parseBool(field, text);
    case Kind::I32:
        return parseInteger<std::int32_t>(field, text);
    case Kind::I64:
        return parseInteger<std::int64_t>(field, text);
    case Kind::String:
        if (!isUtf8(text))
            reject("argument '" + field.name + "' is not UTF-8");
        return Value{text};
    default:
        reject("argument '" + field.name + "' has the type " + field.type.name() +
               ", which the command line does not support");
    }
}

const Method& requireMethod(const Interface& service, const std::string& name)
{
    const Method* method = service.method(name);
    if (method != nullptr)
        return *method;
    const std::vector<std::string> similar = nearest(name, service.methodNames());
    reject("unknown method " + quoted(name) +
           (similar.empty() ? "; 'zorcall --list' lists the methods" : "; nearest: " + join(similar, ", ")));
}

Call parseCall(const Interface& service, const std::vector<std::string>& words, bool allowMissing)
{
    Call call;
    call.method = &requireMethod(service, words.at(0));
    call.arguments.resize(call.method->arguments.size());
    call.text = joinWords(words);
    for (std::size_t i = 1; i < words.size(); ++i)
        readArgument(&call, words[i]);
    if (!allowMissing)
        requireAll(call);
    return call;
}

void putThroughGate(Call* call)
{
    for (const char* gateMethod : {"Init", "PreProcessing", "PostProcessing"}) {
        if (call->method->name == gateMethod)
            reject(call->method->name + " belongs to the gate and cannot be called with --gated");
    }
    call->gated = true;
}

} // namespace zorcall
