#include "host/objects/CallText.h"

#include "host/machine/GuidedTasks.h"
#include "host/objects/DiskText.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <vector>

namespace host {

namespace {

constexpr qint64 kUnitBytes = 1024;

struct Argument
{
    QString key; ///< empty for a word without a key
    QString value;
};

bool isNameLetter(QChar letter)
{
    return letter.isLetterOrNumber() || letter == QLatin1Char('_');
}

int nameEnd(const QString& text, int from)
{
    while (from < text.size() && isNameLetter(text.at(from)))
        ++from;
    return from;
}

// The position after a quoted string. Without a closing quote, the end of the text.
int quotedEnd(const QString& text, int from)
{
    for (int at = from + 1; at < text.size(); ++at) {
        if (text.at(at) == QLatin1Char('\\'))
            ++at;
        else if (text.at(at) == QLatin1Char('"'))
            return at + 1;
    }
    return text.size();
}

// The position after a JSON object or array.
int bracketEnd(const QString& text, int from)
{
    int depth = 0;
    for (int at = from; at < text.size();) {
        const QChar letter = text.at(at);
        if (letter == QLatin1Char('"')) {
            at = quotedEnd(text, at);
            continue;
        }
        if (letter == QLatin1Char('{') || letter == QLatin1Char('['))
            ++depth;
        if (letter == QLatin1Char('}') || letter == QLatin1Char(']'))
            --depth;
        ++at;
        if (depth == 0)
            return at;
    }
    return text.size();
}

int valueEnd(const QString& text, int from)
{
    if (from >= text.size())
        return from;
    const QChar first = text.at(from);
    if (first == QLatin1Char('"'))
        return quotedEnd(text, from);
    if (first == QLatin1Char('{') || first == QLatin1Char('['))
        return bracketEnd(text, from);
    while (from < text.size() && !text.at(from).isSpace())
        ++from;
    return from;
}

std::vector<Argument> split(const QString& text)
{
    std::vector<Argument> parts;
    for (int at = 0; at < text.size();) {
        if (text.at(at).isSpace()) {
            ++at;
            continue;
        }
        const int name = nameEnd(text, at);
        const bool hasKey = name > at && name < text.size() && text.at(name) == QLatin1Char('=');
        const int start = hasKey ? name + 1 : at;
        const int end = valueEnd(text, start);
        parts.push_back({hasKey ? text.mid(at, name - at) : QString(), text.mid(start, end - start)});
        at = end;
    }
    return parts;
}

bool isSize(const QString& key)
{
    return key.endsWith(QLatin1String("size"), Qt::CaseInsensitive) ||
           key.endsWith(QLatin1String("capacity"), Qt::CaseInsensitive);
}

QString numberText(const QString& key, const QString& number)
{
    bool isNumber = false;
    const qint64 bytes = number.toLongLong(&isNumber);
    if (!isNumber || !isSize(key) || qAbs(bytes) < kUnitBytes)
        return number;
    return bytes < 0 ? QLatin1Char('-') + sizeText(-bytes) : sizeText(bytes);
}

QString jsonText(const QString& key, const QJsonValue& value);

QString objectText(const QJsonObject& object)
{
    QStringList parts;
    for (auto it = object.begin(); it != object.end(); ++it)
        parts.append(it.key() + QLatin1Char('=') + jsonText(it.key(), it.value()));
    return parts.join(QLatin1Char(' '));
}

QString jsonText(const QString& key, const QJsonValue& value)
{
    if (value.isArray()) {
        QStringList parts;
        const QJsonArray values = value.toArray();
        for (const QJsonValue& each : values)
            parts.append(jsonText(key, each));
        return parts.join(QStringLiteral(", "));
    }
    if (value.isString())
        return QLatin1Char('"') + value.toString() + QLatin1Char('"');
    if (!value.isObject())
        return numberText(key, value.toVariant().toString());
    const QVariantMap record = value.toObject().toVariantMap();
    const Text place = describeRecord(record);
    return diskIndexOf(record) >= 0 || record.contains(QStringLiteral("driveLetter"))
               ? place.translated()
               : objectText(value.toObject());
}

QString readableValue(const Argument& argument)
{
    const QJsonDocument json = QJsonDocument::fromJson(argument.value.toUtf8());
    if (json.isNull())
        return numberText(argument.key, argument.value);
    // A record without a key is the call's whole argument list.
    if (argument.key.isEmpty() && json.isObject())
        return objectText(json.object());
    return json.isObject() ? jsonText(argument.key, json.object()) : jsonText(argument.key, json.array());
}

// The first string in an object with one of the usual keys.
QString nameIn(const QJsonObject& call)
{
    for (const char* key : {"name", "tool", "function", "method"}) {
        if (call.value(QLatin1String(key)).isString())
            return call.value(QLatin1String(key)).toString();
    }
    return QString();
}

QJsonObject argumentsIn(const QJsonObject& call)
{
    for (const char* key : {"arguments", "args", "parameters", "params", "input"}) {
        if (call.value(QLatin1String(key)).isObject())
            return call.value(QLatin1String(key)).toObject();
    }
    return {};
}

QString compact(const QJsonObject& object)
{
    return object.isEmpty() ? QString()
                            : QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

} // namespace

AnnouncedCall splitCall(const QString& toolCalls)
{
    const QString text = toolCalls.simplified();
    QJsonDocument json = QJsonDocument::fromJson(text.toUtf8());
    if (json.isArray() && json.array().size() == 1)
        json = QJsonDocument(json.array().first().toObject());
    if (json.isObject() && !nameIn(json.object()).isEmpty())
        return {nameIn(json.object()), compact(argumentsIn(json.object()))};
    const int length = nameEnd(text, 0);
    return {text.left(length), text.mid(length).trimmed()};
}

QString readableArguments(const QString& arguments)
{
    QStringList parts;
    for (const Argument& argument : split(arguments))
        parts.append((argument.key.isEmpty() ? QString() : argument.key + QLatin1Char('=')) +
                     readableValue(argument));
    return parts.join(QLatin1Char(' '));
}

namespace {

bool isDrive(const QString& key, QString value, const QString& letter)
{
    if (!key.endsWith(QLatin1String("letter"), Qt::CaseInsensitive))
        return false;
    value.remove(QLatin1Char('"'));
    return value.left(1).compare(letter, Qt::CaseInsensitive) == 0 &&
           (value.size() == 1 || value.midRef(1) == QLatin1String(":"));
}

bool holdsDrive(const QJsonValue& value, const QString& key, const QString& letter)
{
    if (value.isString())
        return isDrive(key, value.toString(), letter);
    const QJsonObject object = value.toObject();
    for (auto it = object.begin(); it != object.end(); ++it) {
        if (holdsDrive(it.value(), it.key(), letter))
            return true;
    }
    return false;
}

} // namespace

bool namesDrive(const QString& arguments, const QString& letter)
{
    for (const Argument& argument : split(arguments)) {
        const QJsonDocument json = QJsonDocument::fromJson(argument.value.toUtf8());
        if (json.isObject() ? holdsDrive(json.object(), argument.key, letter)
                            : isDrive(argument.key, argument.value, letter))
            return true;
    }
    return false;
}

} // namespace host
