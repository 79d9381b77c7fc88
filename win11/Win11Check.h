#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QObject>
#include <QtCore/QString>

/// Whether this machine meets the hardware requirements of Windows 11: one yes or no, without reasons. Every
/// failure to find out counts as no. Used by one thread; can block for minutes.
///
/// Calling order: construct, setGptDisk, isGptDisk and, if that is true, checkAll.
class Win11Check : public QObject
{
public:
    explicit Win11Check(QObject* parent = nullptr);

    /// Whether the boot disk is GPT; the outcome until checkAll.
    void setGptDisk(bool value);
    bool isGptDisk() const { return gptDisk; }
    /// Runs the checks up to the first that fails. The output files of two of them stay in the scratch
    /// folder.
    bool checkAll();

private:
    void checkProcessor();
    void checkFirmware();
    void checkMemory();
    void checkDiskSize();
    void checkTpm();
    void checkDirectX();
    void checkSecureBoot();

    // Runs a command that writes @p outputFile, and gives what it wrote; empty if it wrote none.
    static QByteArray runHiddenCommand(const QString& command, const QString& outputFile);

    bool passed = false;
    bool gptDisk = false;
    QString tempDir;
};
