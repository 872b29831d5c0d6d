#include "app/FrameDialogs.h"

#include "app/CMainFrame.h"
#include "dialogs/ImageInfoDialog.h"
#include "dialogs/OptionsDialog.h"
#include "dialogs/SystemInfoDialog.h"
#include "formats/LoadLimits.h"
#include "image/UndoLimits.h"
#include "platform/Settings.h"
#include "view/CDisplayRenderer.h"
#include "view/CViewWindow.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QStorageInfo>
#include <QTextStream>

void FrameDialogs::Options(CMainFrame& frame) {
    const LoadLimitSize limits = LoadLimits::StartFromSettings();
    OptionsValues before{frame.JpegQuality(), frame.Renderer().DisplayMode(), frame.PenPressureSimulation(),
                         limits.width, limits.height};
    before.undoSteps = undolimits::StoredSteps();
    before.undoMemoryMB = undolimits::StoredMemoryMB();
    OptionsDialog dialog(before, &frame);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    const OptionsValues after = dialog.Values();
    frame.SetJpegQuality(after.jpegQuality);
    frame.SetPressureSimulation(after.pressureSimulation);
    platform::Settings::WriteInt(LoadLimits::kSection, LoadLimits::kWidthKey, after.maxLoadWidth);
    platform::Settings::WriteInt(LoadLimits::kSection, LoadLimits::kHeightKey, after.maxLoadHeight);
    platform::Settings::WriteInt(undolimits::kSection, undolimits::kStepsKey, after.undoSteps);
    platform::Settings::WriteInt(undolimits::kSection, undolimits::kMemoryKey, after.undoMemoryMB);
    frame.UndoHistory().SetLimits(undolimits::Make(after.undoSteps, after.undoMemoryMB));
    if (after.displayMode != before.displayMode) {
        // Re-render in the new mode; the background needs no erasing.
        frame.Renderer().SetDisplayMode(after.displayMode);
        frame.ViewWindow()->InvalidateAll();
    }
}

void FrameDialogs::ImageInformation(CMainFrame& frame) {
    ImageInfoDialog dialog(*frame.Document(), frame.AlternativeLayout(), &frame);
    dialog.exec();
}

void FrameDialogs::SystemInformation(CMainFrame& frame) {
    SystemInfoDialog dialog(ReadSystemFigures(), frame.AlternativeLayout(), &frame);
    dialog.exec();
}

SystemFigures FrameDialogs::ReadSystemFigures() {
    SystemFigures figures;
    QFile meminfo(QStringLiteral("/proc/meminfo"));
    if (meminfo.open(QIODevice::ReadOnly | QIODevice::Text)) {
        QTextStream in(&meminfo);
        for (QString line = in.readLine(); !line.isNull(); line = in.readLine()) {
            const QStringList parts = line.simplified().split(QLatin1Char(' '));
            if (parts.size() < 2) {
                continue;
            }
            const std::uint64_t bytes = parts[1].toULongLong() * 1024;
            if (parts[0] == QLatin1String("MemTotal:")) {
                figures.totalMemory = bytes;
            } else if (parts[0] == QLatin1String("MemAvailable:")) {
                figures.freeMemory = bytes;
            }
        }
    }
    QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    if (pictures.isEmpty() || !QDir(pictures).exists()) {
        pictures = QDir::homePath();
    }
    const QStorageInfo storage(pictures);
    if (storage.isValid()) {
        figures.totalSpace = static_cast<std::uint64_t>(storage.bytesTotal());
        figures.freeSpace = static_cast<std::uint64_t>(storage.bytesAvailable());
    }
    return figures;
}
