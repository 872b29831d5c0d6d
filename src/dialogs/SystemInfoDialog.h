#pragma once

#include <QDialog>
#include <cstdint>

// Memory and storage figures in bytes.
struct SystemFigures {
    std::uint64_t totalMemory = 0;
    std::uint64_t freeMemory = 0;
    std::uint64_t totalSpace = 0;
    std::uint64_t freeSpace = 0;
};

// "System Information": the four figures in KBytes, grouped by thousands.
class SystemInfoDialog : public QDialog {
    Q_OBJECT
public:
    SystemInfoDialog(const SystemFigures& figures, bool alternativeLayout, QWidget* parent = nullptr);

    // Bytes / 1024 with thousands separators.
    static QString KBytes(std::uint64_t bytes);
};
