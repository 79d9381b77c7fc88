#include "agent/Program.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QTextCodec>

#include <iostream>

#ifdef Q_OS_WIN
#include <fcntl.h>
#include <io.h>
#include <stdio.h>
#endif

namespace {

// The same bytes on every system: no line ends that change on the way, and no byte that ends the input.
void passBytesThrough()
{
#ifdef Q_OS_WIN
    for (FILE* stream : {stdin, stdout, stderr})
        _setmode(_fileno(stream), _O_BINARY);
#endif
}

} // namespace

int main(int argc, char** argv)
{
    // Labels are UTF-8 whatever the locale, also in the bare one of a service or a container.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    passBytesThrough();
    const QCoreApplication application(argc, argv);
    return zorcall::runProgram(QCoreApplication::arguments(), qEnvironmentVariable("AGENT_NATIVE_PORT"),
                               std::cin, std::cout, std::cerr);
}
