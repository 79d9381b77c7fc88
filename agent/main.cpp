#include "agent/Program.h"
#include "agent/StandardStreams.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QTextCodec>

#include <iostream>

int main(int argc, char** argv)
{
    // Arguments and messages are UTF-8 in every locale, including the C locale of a service or a container.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    zorcall::useBinaryStreams();
    const QCoreApplication application(argc, argv);
    return zorcall::runProgram(QCoreApplication::arguments(), qEnvironmentVariable("AGENT_NATIVE_PORT"),
                               std::cin, std::cout, std::cerr);
}
