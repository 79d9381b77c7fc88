// The completion in real shells at a terminal. The drives are those of the sandbox host.
#include "tests/agent/SandboxHost.h"
#include "tests/agent/Terminal.h"
#include "tests/support/Threads.h"

#include <QtCore/QFileInfo>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtCore/QStandardPaths>
#include <QtCore/QTemporaryDir>

namespace {

constexpr const char* kLineStart = "\x01"; // Ctrl-A

/// An interactive shell without start-up files.
class Shell
{
public:
    Shell(SandboxHost& host, const QString& command)
    {
        QProcessEnvironment environment = zorcallEnvironment(
            {host.variable(), QStringLiteral("TERM=xterm"), QStringLiteral("EDITOR=emacs")});
        environment.remove(QStringLiteral("VISUAL"));
        environment.insert(QStringLiteral("PATH"), QFileInfo(zorcallPath()).path() + QLatin1Char(':') +
                                                       environment.value(QStringLiteral("PATH")));
        // Without a history file of the user.
        environment.insert(QStringLiteral("HISTFILE"), QString());
        process_.setProcessEnvironment(environment);
        process_.start(QStringLiteral("script"),
                       {QStringLiteral("-qec"), command, QStringLiteral("/dev/null")});
    }
    ~Shell()
    {
        process_.kill();
        process_.waitForFinished();
    }

    void type(const QByteArray& keys) { process_.write(keys); }

    bool waitFor(const char* pattern)
    {
        const QRegularExpression expression(QString::fromLatin1(pattern));
        const QRegularExpression escape(QStringLiteral("\x1B\\[[0-9;?]*[A-Za-z]|\r"));
        return pumpUntil(
            [&] {
                output_ += process_.readAllStandardOutput();
                return expression.match(QString::fromUtf8(output_).remove(escape)).hasMatch();
            },
            50000);
    }

    /// Types a line with tabs, and waits for the completed line, which the shell prints.
    bool completes(const QByteArray& keys, const char* pattern)
    {
        output_.clear();
        type(keys + kLineStart + "echo RESULT:\n");
        return waitFor(pattern);
    }

    const QByteArray& output() const { return output_; }

private:
    QProcess process_;
    QByteArray output_;
};

void expectCompletions(Shell& shell)
{
    EXPECT_TRUE(
        shell.completes("zorcall GetPart\tdri\tH\t", "\nRESULT:zorcall GetPartitionInfo driveLetter=H\\s"))
        << shell.output().constData();
    EXPECT_TRUE(
        shell.completes("zorcall --allow\tFormatP\tquick\tf\tclus\t",
                        "\nRESULT:zorcall --allow-missing FormatPartition quickFormat=false clusterSize=\\s"))
        << shell.output().constData();
    EXPECT_TRUE(
        shell.completes("zorcall --script /etc/host\tname\t", "\nRESULT:zorcall --script /etc/hostname\\s"))
        << shell.output().constData();
    // A drive that the host does not have is left as typed.
    EXPECT_TRUE(shell.completes("zorcall GetPartitionInfo driveLetter=Z\t",
                                "\nRESULT:zorcall GetPartitionInfo driveLetter=Z\\s"))
        << shell.output().constData();
}

TEST(ZorcallCompletion, Bash_CompletesToolsArgumentsAndTheDrivesOfTheHost)
{
    SandboxHost host;
    Shell shell(host, QStringLiteral("bash --norc --noprofile -i"));
    shell.type("source <(zorcall completion bash); echo LOADED:$?\n");
    ASSERT_TRUE(shell.waitFor("\nLOADED:0")) << shell.output().constData();
    expectCompletions(shell);
    shell.type("zorcall GetPartitionInfo driveLetter=\t\t");
    EXPECT_TRUE(shell.waitFor("\nC\\s+D\\s+E\\s+F\\s+G\\s+H\\s")) << shell.output().constData();
}

TEST(ZorcallCompletion, Zsh_CompletesToolsArgumentsAndTheDrivesOfTheHost)
{
    if (QStandardPaths::findExecutable(QStringLiteral("zsh")).isEmpty())
        GTEST_SKIP() << "zsh is missing (scripts/test installs it)";
    SandboxHost host;
    Shell shell(host, QStringLiteral("zsh -f -i"));
    shell.type(
        "PS1='> '; unsetopt prompt_sp; autoload -Uz compinit; compinit -D; source <(zorcall completion zsh); "
        "echo LOADED:$?\n");
    ASSERT_TRUE(shell.waitFor("\nLOADED:0")) << shell.output().constData();
    expectCompletions(shell);
    shell.type("zorcall GetPartitionInfo driveLetter=\t");
    EXPECT_TRUE(shell.waitFor("driveLetter=H\\s+-- STICK, FAT32, 59.00 GB")) << shell.output().constData();
}

TEST(ZorcallCompletion, UnknownShell_Code2)
{
    const Ran refused{2, "", "zorcall: completion requires the name of a shell: bash or zsh\n"};
    EXPECT_EQ(zorcall(words("completion fish")), refused);
    EXPECT_EQ(zorcall(words("completion")), refused);
}

TEST(ZorcallCompletion, UnfinishedQuote_PrintsNothing)
{
    EXPECT_EQ(zorcall({QStringLiteral("__complete"), QStringLiteral("zorcall EjectUsb 'drive")}),
              (Ran{0, "", ""}));
}

} // namespace
