#include "agent/Program.h"
#include "agent/StandardStreams.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QTextCodec>

#include <iostream>

namespace {

// NO_COLOR is the convention of https://no-color.org.
bool acceptsColour()
{
    return qEnvironmentVariableIsEmpty("NO_COLOR") && qgetenv("TERM") != "dumb" &&
           zorcall::enableTerminalColour();
}

} // namespace

int main(int argc, char** argv)
{
    // Arguments and messages are UTF-8 in every locale, including the C locale of a service or a container.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    zorcall::useBinaryStreams();
    const QCoreApplication application(argc, argv);
    zorcall::Environment environment;
    environment.nativePort = qEnvironmentVariable("AGENT_NATIVE_PORT");
    environment.searchedPorts = qEnvironmentVariable("ZORCALL_PORTS");
    environment.terminal = zorcall::isTerminal();
    environment.colour = environment.terminal && acceptsColour();
    return zorcall::runProgram(QCoreApplication::arguments(), environment, std::cin, std::cout, std::cerr);
}
