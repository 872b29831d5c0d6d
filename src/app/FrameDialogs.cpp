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

namespace {
// Every field as the settings hold it now.
OptionsValues CurrentOptions(CMainFrame& frame) {
    const LoadLimitSize limits = LoadLimits::StartFromSettings();
    OptionsValues values{frame.JpegQuality(), frame.Renderer().DisplayMode(), frame.PenPressureSimulation(),
                         limits.width, limits.height};
    values.undoSteps = undolimits::StoredSteps();
    values.undoMemoryMB = undolimits::StoredMemoryMB();
    values.fitLargePictures = CMainFrame::FitsLargePictures();
    return values;
}

void WriteInt(const char* section, const char* key, int before, int after) {
    if (after != before) {
        platform::Settings::WriteInt(section, key, after);
    }
}
} // namespace

// OK writes only what the user changed, so a setting the dialog shows but
// was not touched keeps exactly what the settings hold.
void FrameDialogs::Options(CMainFrame& frame) {
    const OptionsValues before = CurrentOptions(frame);
    OptionsDialog dialog(before, &frame);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    const OptionsValues after = dialog.Values();
    if (after.jpegQuality != before.jpegQuality) {
        frame.SetJpegQuality(after.jpegQuality);
    }
    if (after.pressureSimulation != before.pressureSimulation) {
        frame.SetPressureSimulation(after.pressureSimulation);
    }
    if (after.fitLargePictures != before.fitLargePictures) {
        CMainFrame::SetFitsLargePictures(after.fitLargePictures);
    }
    WriteInt(LoadLimits::kSection, LoadLimits::kWidthKey, before.maxLoadWidth, after.maxLoadWidth);
    WriteInt(LoadLimits::kSection, LoadLimits::kHeightKey, before.maxLoadHeight, after.maxLoadHeight);
    WriteInt(undolimits::kSection, undolimits::kStepsKey, before.undoSteps, after.undoSteps);
    WriteInt(undolimits::kSection, undolimits::kMemoryKey, before.undoMemoryMB, after.undoMemoryMB);
    if (after.undoSteps != before.undoSteps || after.undoMemoryMB != before.undoMemoryMB) {
        frame.UndoHistory().SetLimits(undolimits::Make(after.undoSteps, after.undoMemoryMB));
    }
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
