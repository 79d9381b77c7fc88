#include "fuzz/Fuzz.h"

#include "plugin/TsanAnnotations.h"

#include <QtGui/QGuiApplication>

#include <cstdio>
#include <cstdlib>

void require(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "Violated property: %s\n", what);
    std::abort();
}

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Messages would slow the run down.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (type == QtFatalMsg)
            std::fprintf(stderr, "%s\n", qPrintable(text));
    });
    static const auto* const application = new TsanAnnotations::Annotated<QGuiApplication>(*argc, *argv);
    Q_UNUSED(application)
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzzOne(Bytes(data, size));
    return 0;
}
