// Writes the manual page of a program: manual_page zorcall|zorhost|FILE.json OUTPUT. The JSON file describes
// a program that is not written in C++.
#include "agent/OptionTable.h"
#include "host/Options.h"
#include "manual/Manual.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <cstdio>
#include <stdexcept>

namespace {

std::string text(const QJsonObject& object, const char* key)
{
    const QString value = object.value(QLatin1String(key)).toString();
    if (value.isEmpty())
        throw std::runtime_error(std::string("the description lacks ") + key);
    return value.toStdString();
}

std::vector<std::string> texts(const QJsonObject& object, const char* key)
{
    std::vector<std::string> values;
    for (const auto& value : object.value(QLatin1String(key)).toArray())
        values.push_back(value.toString().toStdString());
    return values;
}

manual::Section readSection(const QJsonObject& object)
{
    manual::Section section{text(object, "title"), {}};
    for (const auto& row : object.value(QLatin1String("rows")).toArray())
        section.rows.push_back({text(row.toObject(), "term"), text(row.toObject(), "text")});
    return section;
}

QJsonObject readObject(const QString& name)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error(name.toStdString() + " cannot be read");
    return QJsonDocument::fromJson(file.readAll()).object();
}

manual::Manual readManual(const QJsonObject& object)
{
    manual::Manual manual{text(object, "program"),
                          text(object, "summary"),
                          texts(object, "usage"),
                          text(object, "description"),
                          {},
                          texts(object, "seeAlso")};
    for (const auto& section : object.value(QLatin1String("sections")).toArray())
        manual.sections.push_back(readSection(section.toObject()));
    return manual;
}

std::string page(const QString& source)
{
    if (source == QLatin1String("zorcall"))
        return manual::manualPage(zorcall::programManual(), PROJECT_VERSION_TEXT);
    if (source == QLatin1String("zorhost"))
        return manual::manualPage(host::programManual(), PROJECT_VERSION_TEXT);
    const QJsonObject description = readObject(source);
    return manual::manualPage(readManual(description), text(description, "version"));
}

} // namespace

int main(int argc, char** argv)
{
    try {
        if (argc != 3)
            throw std::runtime_error("usage: manual_page zorcall|zorhost|FILE.json OUTPUT");
        const std::string content = page(QString::fromLocal8Bit(argv[1]));
        QFile output(QString::fromLocal8Bit(argv[2]));
        if (!output.open(QIODevice::WriteOnly) ||
            output.write(QByteArray::fromStdString(content)) != static_cast<qint64>(content.size()) ||
            !output.flush())
            throw std::runtime_error(std::string(argv[2]) + " cannot be written");
        return 0;
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "manual_page: %s\n", exception.what());
        return 1;
    }
}
