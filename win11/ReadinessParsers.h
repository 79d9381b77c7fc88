#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QVariantMap>

#include <vector>

/// What the readiness checks read out of the answers of the system. Free of any system call.

/// What is asked of the processor: its name, the address width that it has and that the running system uses.
struct ProcessorFacts
{
    QString name;
    int addressWidth = 0;
    int systemWidth = 0;
};

/// @p processors are rows of Win32_Processor, of which the last counts; @p systems of Win32_OperatingSystem.
ProcessorFacts readProcessorFacts(const std::vector<QVariantMap>& processors,
                                  const std::vector<QVariantMap>& systems);

/// True if the last row of Win32_TPM is activated, enabled and of version 2.0 or above.
bool isTpmReady(const std::vector<QVariantMap>& rows);

/// True if the text that dxdiag writes names device driver interface 12 and a display driver model of 2 or 3.
bool isDirectXReady(QByteArray listing);

/// True if the command answered, whatever it answered: firmware that does not know Secure Boot gives neither
/// word.
/// @p output may be text of 8 or of 16 bits.
bool isSecureBootKnown(const QByteArray& output);
