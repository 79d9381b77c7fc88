#include "agent/Program.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QTextCodec>

#include <iostream>

int main(int argc, char** argv)
{
    // Labels are UTF-8 whatever the locale, also in the bare one of a service or a container.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    const QCoreApplication application(argc, argv);
    return zorcall::runProgram(QCoreApplication::arguments(), qEnvironmentVariable("AGENT_NATIVE_PORT"),
                               std::cin, std::cout, std::cerr);
}
