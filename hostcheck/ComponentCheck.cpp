#include "hostcheck/ComponentCheck.h"

#include "plugin/ComponentBase.h"
#include "plugin/ComponentLibrary.h"

#include <QtCore/QFileInfo>
#include <QtCore/QLibrary>

#include <memory>

namespace hostcheck {

namespace {

QString sentence(LoadStep step)
{
    switch (step) {
    case LoadStep::Complete:
        return QStringLiteral("The component %1 can be loaded from %2.");
    case LoadStep::FindFile:
        return QStringLiteral("The component %1 cannot be loaded: the library %2 is missing.");
    case LoadStep::LoadFile:
        return QStringLiteral(
            "The component %1 cannot be loaded: the system's loader rejects the library %2, or "
            "another library that it needs is missing.");
    case LoadStep::FindFactory:
        return QStringLiteral(
            "The component %1 cannot be loaded: the library %2 does not export getInstance.");
    case LoadStep::CallFactory:
        return QStringLiteral(
            "The component %1 cannot be loaded: getInstance of the library %2 returns null.");
    }
    return QString();
}

} // namespace

LoadReport checkComponent(const QString& name, const QString& parent)
{
    LoadReport report{LoadStep::Complete, parent + name, componentLibraryPath(name, parent), QString()};
    QLibrary library(report.path);
    // The loader comes first, because it also finds files whose names differ in prefix or suffix.
    if (!library.load()) {
        report.step = QFileInfo::exists(report.path) ? LoadStep::LoadFile : LoadStep::FindFile;
        report.message = library.errorString();
        return report;
    }
    const ComponentFactory factory = componentFactory(library);
    if (factory == nullptr) {
        // QLibrary's message for a missing symbol is unspecific, so it is omitted.
        report.step = LoadStep::FindFactory;
        return report;
    }
    const std::unique_ptr<CComponentBase> component(factory());
    if (component == nullptr)
        report.step = LoadStep::CallFactory;
    return report;
}

QString textOf(const LoadReport& report)
{
    const QString text = sentence(report.step).arg(report.name, report.path);
    return report.message.isEmpty() ? text : text + QLatin1Char(' ') + report.message;
}

} // namespace hostcheck
