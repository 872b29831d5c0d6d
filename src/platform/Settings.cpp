#include "platform/Settings.h"

#include "platform/AppIdentity.h"

#include <QSettings>
#include <QString>

namespace platform {

namespace {
const char* const kOrganisation = identity::kCompany;
const char* const kApplication = identity::kProgram;

QString KeyPath(const char* section, const char* key) {
    return QString::fromUtf8(section) + QLatin1Char('/') + QString::fromUtf8(key);
}

QSettings Store() {
    return QSettings(QSettings::NativeFormat, QSettings::UserScope, kOrganisation, kApplication);
}
} // namespace

int Settings::ReadInt(const char* section, const char* key, int defaultValue) {
    bool ok = false;
    const int value = Store().value(KeyPath(section, key), defaultValue).toInt(&ok);
    return ok ? value : defaultValue;
}

void Settings::WriteInt(const char* section, const char* key, int value) {
    Store().setValue(KeyPath(section, key), value);
}

std::string Settings::ReadString(const char* section, const char* key, const std::string& defaultValue) {
    const QVariant value = Store().value(KeyPath(section, key));
    return value.isValid() ? value.toString().toStdString() : defaultValue;
}

void Settings::WriteString(const char* section, const char* key, const std::string& value) {
    Store().setValue(KeyPath(section, key), QString::fromStdString(value));
}

void Settings::Remove(const char* section, const char* key) {
    Store().remove(KeyPath(section, key));
}

void Settings::UseFolder(const std::string& folder) {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QString::fromStdString(folder));
}

} // namespace platform
