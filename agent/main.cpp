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
    const zorcall::Environment environment{qEnvironmentVariable("AGENT_NATIVE_PORT"),
                                           qEnvironmentVariable("ZORCALL_PORTS")};
    return zorcall::runProgram(QCoreApplication::arguments(), environment, std::cin, std::cout, std::cerr);
}
