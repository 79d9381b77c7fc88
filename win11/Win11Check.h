#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QObject>
#include <QtCore/QString>

/// Checks whether this machine meets the hardware requirements of Windows 11. The result is a single bool
/// without reasons; a check that cannot be carried out counts as failed. One thread; can block for minutes.
///
/// Calling order: construct, setGptDisk, isGptDisk and, if that is true, checkAll.
class Win11Check : public QObject
{
public:
    explicit Win11Check(QObject* parent = nullptr);

    /// Sets whether the boot disk is GPT. This is also the result until checkAll.
    void setGptDisk(bool value);
    bool isGptDisk() const { return gptDisk; }
    /// Runs the checks until one fails. The output files of two checks remain in the temporary folder.
    bool checkAll();

private:
    void checkProcessor();
    void checkFirmware();
    void checkMemory();
    void checkDiskSize();
    void checkTpm();
    void checkDirectX();
    void checkSecureBoot();

    // Runs a command that writes @p outputFile and returns the content of that file; empty if it was not
    // written.
    static QByteArray runHiddenCommand(const QString& command, const QString& outputFile);

    bool passed = false;
    bool gptDisk = false;
    QString tempDir;
};
