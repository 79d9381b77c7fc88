// zorcall: its words, its options, the description of the service, and the replies of an untrusted server.
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

// False for a long unknown name: the search for similar names would take nearly all of the time under the
// sanitizers.
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
        require(splitWords(joinWords(words)) == words, "joined words split into the same words");
        if (!isQuick(words))
            return;
    } catch (const Failure& failure) {
        require(failure.code() == Usage, "an unreadable line is a usage error");
    }
    try {
        const std::optional<Call> call = parseLine(service(), line, true);
        if (!call)
            return;
        require(call->arguments.size() == call->method->arguments.size(),
                "a call has one entry per argument");
        TBinaryProtocol protocol(std::make_shared<TMemoryBuffer>());
        writeCall(protocol, *call->method, call->arguments, 1);
    } catch (const Failure& failure) {
        require(failure.code() == Usage, "an unreadable call is a usage error");
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
        require(failure.code() == Usage, "an unreadable command line is a usage error");
    }
}

void readDescription(Bytes input)
{
    try {
        const Interface description(QByteArray::fromStdString(input.rest()));
        std::ostringstream out;
        for (const Method& method : description.methods())
            writeMethod(out, description, {&method, {}, {}, {}});
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
    // As the client reads, with a lower limit, because allocating 16 MiB takes time.
    TBinaryProtocol protocol(buffer, 100000, 200000, true, true);
    try {
        const std::string json = toJson(service(), method.result, readReply(protocol, service(), method, 1));
        QJsonParseError error;
        QJsonDocument::fromJson("[" + QByteArray::fromStdString(json) + "]", &error);
        require(error.error == QJsonParseError::NoError, "an answer is valid JSON");
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
