// The command line of the agent: its words, its options, the description of the service, and the replies of a
// server that is none of ours.
#include "agent/Call.h"
#include "agent/Codec.h"
#include "agent/Failure.h"
#include "agent/JsonWriter.h"
#include "agent/Listing.h"
#include "agent/Options.h"
#include "agent/Script.h"
#include "agent/Words.h"
#include "fuzz/Fuzz.h"

#include <thrift/Thrift.h>
#include <thrift/protocol/TBinaryProtocol.h>
#include <thrift/transport/TBufferTransports.h>

#include <QtCore/QJsonDocument>

#include <sstream>

namespace {

using namespace zorcall;
using apache::thrift::protocol::TBinaryProtocol;
using apache::thrift::transport::TMemoryBuffer;

const Interface& service()
{
    return Interface::builtIn();
}

// False where the nearest of 69 names would be looked for to a long one: under the sanitizers that takes
// nearly all of the time.
bool isQuick(const std::vector<std::string>& words)
{
    for (std::size_t i = 0; i < words.size() && i < 2; ++i) {
        if (words[i].size() > 16 && service().method(words[i]) == nullptr)
            return false;
    }
    return true;
}

void readWords(Bytes input)
{
    const std::string line = input.rest();
    try {
        const std::vector<std::string> words = splitWords(line);
        require(splitWords(joinWords(words)) == words, "joined words are split as they were");
        if (!isQuick(words))
            return;
    } catch (const Failure& failure) {
        require(failure.code() == Usage, "a line that can't be read is a matter of usage");
    }
    try {
        const std::optional<Call> call = parseLine(service(), line, true);
        if (!call)
            return;
        require(call->arguments.size() == call->method->arguments.size(), "an entry for each argument");
        TBinaryProtocol protocol(std::make_shared<TMemoryBuffer>());
        writeCall(protocol, *call->method, call->arguments, 1);
    } catch (const Failure& failure) {
        require(failure.code() == Usage, "a call that can't be read is a matter of usage");
    }
}

void readOptions(Bytes input)
{
    QStringList arguments{QStringLiteral("zorcall")};
    while (input.left() > 0 && arguments.size() < 20)
        arguments.append(QString::fromStdString(input.text(input.byte())));
    try {
        const Options options = parseOptions(arguments);
        addressOf(options, QStringLiteral("9090"));
        if (options.mode == Options::Call && isQuick(options.words))
            parseCall(service(), options.words, options.allowMissing);
    } catch (const Failure& failure) {
        require(failure.code() == Usage, "a command line that can't be read is a matter of usage");
    }
}

void readDescription(Bytes input)
{
    try {
        const Interface description(QByteArray::fromStdString(input.rest()));
        std::ostringstream out;
        writeList(out, description);
        for (const Method& method : description.methods())
            writeMethod(out, description, method);
    } catch (const std::runtime_error&) {
    }
}

void readAnswer(Bytes input)
{
    const auto& methods = service().methods();
    const Method& method = methods[input.byte() % methods.size()];
    const std::string bytes = input.rest();
    const auto buffer = std::make_shared<TMemoryBuffer>();
    buffer->write(reinterpret_cast<const std::uint8_t*>(bytes.data()),
                  static_cast<std::uint32_t>(bytes.size()));
    // As the client reads, but for a lower limit: room for sixteen megabytes takes its time.
    TBinaryProtocol protocol(buffer, 100000, 200000, true, true);
    try {
        const std::string json = toJson(service(), method.result, readReply(protocol, service(), method, 1));
        QJsonParseError error;
        QJsonDocument::fromJson("[" + QByteArray::fromStdString(json) + "]", &error);
        require(error.error == QJsonParseError::NoError, "an answer is written as JSON");
    } catch (const Failure&) {
    } catch (const apache::thrift::TException&) {
    }
}

} // namespace

void fuzzOne(Bytes input)
{
    using Reader = void (*)(Bytes);
    static const Reader readers[] = {readWords, readOptions, readDescription, readAnswer};
    readers[input.byte() % std::size(readers)](input);
}
