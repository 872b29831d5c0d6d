#include "app/ExternalSender.h"

#include "platform/MessagePresenter.h"
#include "platform/StringTable.h"

#include <QProcess>
#include <QStandardPaths>

namespace {
ExternalSender::Launcher g_launcher;
} // namespace

void ExternalSender::SetLauncher(Launcher launcher) {
    g_launcher = std::move(launcher);
}

QString ExternalSender::ProgramFor(Channel channel) {
    return QStandardPaths::findExecutable(channel == Channel::Mail ? QStringLiteral("xdg-email")
                                                                   : QStringLiteral("bluetooth-sendto"));
}

QStringList ExternalSender::ArgumentsFor(Channel channel, const QString& path) {
    if (channel == Channel::Mail) {
        return {QStringLiteral("--attach"), path};
    }
    return {path};
}

bool ExternalSender::Send(Channel channel, const QString& path) {
    const int missing =
        channel == Channel::Mail ? platform::IDS_NO_MAIL_PROGRAM : platform::IDS_NO_BLUETOOTH_SENDER;
    const QString program = ProgramFor(channel);
    const QStringList arguments = ArgumentsFor(channel, path);
    const bool started = g_launcher ? g_launcher(program, arguments)
                                    : !program.isEmpty() && QProcess::startDetached(program, arguments);
    if (!started) {
        platform::ShowMessage(missing, platform::MB_ICONEXCLAMATION);
        return false;
    }
    return true;
}
