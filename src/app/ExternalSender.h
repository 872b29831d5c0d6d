#pragma once

#include <QString>
#include <QStringList>
#include <functional>

// Hands a saved picture to the desktop's sending programs: the e-mail client
// through xdg-email, and other devices through the Bluetooth object-push
// sender (bluetooth-sendto), today's successor of infrared beaming.
class ExternalSender {
public:
    enum class Channel { Mail, Device };

    // The program and its arguments for `channel`; an empty program when none
    // is installed.
    static QString ProgramFor(Channel channel);
    static QStringList ArgumentsFor(Channel channel, const QString& path);
    // Starts the program; shows the matching message and returns false when
    // it is missing or does not start.
    static bool Send(Channel channel, const QString& path);

    // Tests replace the program start (program, arguments) -> started; null
    // restores the real one.
    using Launcher = std::function<bool(const QString&, const QStringList&)>;
    static void SetLauncher(Launcher launcher);
};
