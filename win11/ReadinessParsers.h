#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QVariantMap>

#include <vector>

/// Parsers for the readiness checks. They make no system calls. Any thread.

/// The processor's name, its address width, and the width of the running system.
struct ProcessorFacts
{
    QString name;
    int addressWidth = 0;
    int systemWidth = 0;
};

/// @p processors are rows of Win32_Processor, of which the last counts; @p systems are rows of
/// Win32_OperatingSystem.
ProcessorFacts readProcessorFacts(const std::vector<QVariantMap>& processors,
                                  const std::vector<QVariantMap>& systems);

/// True if the last row of Win32_TPM is activated, enabled and of version 2.0 or later.
bool isTpmReady(const std::vector<QVariantMap>& rows);

/// True if the output of dxdiag contains device driver interface 12 and a display driver model of 2 or 3.
bool isDirectXReady(QByteArray listing);

/// True if the output contains "True" or "False". On firmware without Secure Boot the command fails and
/// prints neither. @p output consists of 8-bit or 16-bit characters.
bool isSecureBootKnown(const QByteArray& output);
