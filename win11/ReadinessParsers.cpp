#include "win11/ReadinessParsers.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <algorithm>

namespace {

enum DriverModel { ModelUnknown = 0, Model2 = 2, Model3 = 3 };

// Spellings of one driver model; \xA0 is the no-break space, which some languages use.
DriverModel driverModel(const QByteArray& line)
{
    if (line.contains("DriverModel:3") || line.contains("DriverModel:WDDM3") ||
        line.contains("DriverModel:WDDM\xA0"
                      "3"))
        return Model3;
    if (line.contains("DriverModel:WDDM2") || line.contains("DriverModel:2") ||
        line.contains("DriverModel:WDDM\xA0"
                      "2"))
        return Model2;
    return ModelUnknown;
}

bool isLetter(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

} // namespace

ProcessorFacts readProcessorFacts(const std::vector<QVariantMap>& processors,
                                  const std::vector<QVariantMap>& systems)
{
    ProcessorFacts facts;
    for (const QVariantMap& row : processors) {
        facts.name = row.value(QStringLiteral("Name")).toString();
        facts.addressWidth = row.value(QStringLiteral("AddressWidth")).toInt();
    }
    for (const QVariantMap& row : systems) {
        const QString architecture = row.value(QStringLiteral("OSArchitecture")).toString();
        facts.systemWidth = architecture.contains(QLatin1String("64")) ? 64 : 32;
    }
    return facts;
}

bool isTpmReady(const std::vector<QVariantMap>& rows)
{
    if (rows.empty())
        return false;
    const QVariantMap& last = rows.back();
    const QString version = last.value(QStringLiteral("SpecVersion")).toString();
    return last.value(QStringLiteral("IsActivated_InitialValue")).toBool() &&
           last.value(QStringLiteral("IsEnabled_InitialValue")).toBool() &&
           version.split(QStringLiteral(", ")).first().toDouble() >= 2.0;
}

bool isDirectXReady(QByteArray listing)
{
    bool hasDdi12 = false;
    DriverModel model = ModelUnknown;
    listing.replace(" ", "");
    const QList<QByteArray> lines = listing.split('\n');
    for (const QByteArray& line : lines) {
        hasDdi12 = hasDdi12 || line.contains("DDIVersion:12");
        const DriverModel named = driverModel(line);
        // With several adapters, the last one counts.
        model = named == ModelUnknown ? model : named;
    }
    return hasDdi12 && model != ModelUnknown;
}

bool isSecureBootKnown(const QByteArray& output)
{
    QByteArray letters;
    std::copy_if(output.begin(), output.end(), std::back_inserter(letters), isLetter);
    return letters.contains("True") || letters.contains("False");
}
