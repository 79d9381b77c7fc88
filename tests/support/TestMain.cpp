#include "plugin/TsanAnnotations.h"

#include <QtGui/QGuiApplication>

#include <gtest/gtest.h>

// Every test runs on the thread of a GUI application, as the library does in a host.
int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    TsanAnnotations::Annotated<QGuiApplication> application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
