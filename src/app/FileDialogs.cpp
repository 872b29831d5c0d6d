#include "app/FileDialogs.h"

#include "formats/PictureLoader.h"
#include "platform/Settings.h"

#include <QDir>
#include <QFileDialog>
#include <QRegularExpression>
#include <QFileInfo>
#include <QStandardPaths>

namespace {
const char* const kSection = "MainSection";
const char* const kFolderKey = "OpenFolder";
const char* const kViewModeKey = "FileViewMode";

QString LastFolder() {
    QString fallback = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    if (fallback.isEmpty() || !QDir(fallback).exists()) {
        fallback = QDir::homePath();
    }
    const QString folder = QString::fromStdString(platform::Settings::ReadString(kSection, kFolderKey, ""));
    return !folder.isEmpty() && QDir(folder).exists() ? folder : fallback;
}

void Prepare(QFileDialog& dialog) {
    dialog.setOption(QFileDialog::DontUseNativeDialog, true);
    dialog.setViewMode(platform::Settings::ReadInt(kSection, kViewModeKey, 1) == 0 ? QFileDialog::List
                                                                                   : QFileDialog::Detail);
}

QString Finish(QFileDialog& dialog) {
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return {};
    }
    const QString path = dialog.selectedFiles().first();
    platform::Settings::WriteString(kSection, kFolderKey, QFileInfo(path).absolutePath().toStdString());
    platform::Settings::WriteInt(kSection, kViewModeKey, dialog.viewMode() == QFileDialog::List ? 0 : 1);
    return path;
}
} // namespace

QString FileDialogs::OpenFilter() {
    QStringList patterns;
    for (const std::string& extension : ReadableExtensions()) {
        patterns << QStringLiteral("*.") + QString::fromStdString(extension);
    }
    return QStringLiteral("Pictures (") + patterns.join(QLatin1Char(' ')) + QStringLiteral(");;All files (*)");
}

QString FileDialogs::SaveFilters() {
    return QStringLiteral("JPEG (*.jpg *.jpeg);;Windows Bitmap (*.bmp);;GIF (*.gif);;PNG (*.png)");
}

QString FileDialogs::AskOpenPath(QWidget* parent) {
    QFileDialog dialog(parent, QStringLiteral("Open Image File"), LastFolder(), OpenFilter());
    Prepare(dialog);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    return Finish(dialog);
}

QString FileDialogs::AskSavePath(QWidget* parent, const QString& currentPath) {
    QFileDialog dialog(parent, QStringLiteral("Save As"), LastFolder(), SaveFilters());
    Prepare(dialog);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    // A name typed without an extension takes the one of the chosen type.
    const auto followType = [&dialog](const QString& filter) {
        const int star = filter.indexOf(QStringLiteral("*."));
        dialog.setDefaultSuffix(filter.mid(star + 2).section(QRegularExpression(QStringLiteral("[ )]")), 0, 0));
    };
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, followType);
    if (!currentPath.isEmpty()) {
        const QFileInfo info(currentPath);
        dialog.setDirectory(info.absolutePath());
        dialog.selectFile(info.fileName());
        const QString suffix = info.suffix().toLower();
        for (const QString& filter : SaveFilters().split(QStringLiteral(";;"))) {
            if (filter.contains(QStringLiteral("*.") + suffix)) {
                dialog.selectNameFilter(filter);
            }
        }
    }
    followType(dialog.selectedNameFilter());
    return Finish(dialog);
}
