#include "closed/Log/LogWriter.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QMutex>
#include <QtCore/QString>

#include <cstdarg>
#include <cstdio>

void CLogWriter::Log(const char* format, ...)
{
    va_list list;
    va_start(list, format);
    const QByteArray text = QString::vasprintf(format, list).toUtf8();
    va_end(list);

    static QMutex mutex;
    const QMutexLocker lock(&mutex);
    if (QCoreApplication::instance() != nullptr) {
        QFile file(QCoreApplication::applicationDirPath() + QLatin1String("/aibridge.log"));
        if (file.open(QIODevice::WriteOnly | QIODevice::Append))
            file.write(text);
    }
    if (qEnvironmentVariable("AIBRIDGE_LOG_STDERR") == QLatin1String("1")) {
        std::fputs(text.constData(), stderr);
        std::fflush(stderr);
    }
}
