#include "app/RecentFiles.h"

#include "platform/Settings.h"

#include <QFileInfo>

namespace {
const char* const kSection = "RecentFiles";
std::string KeyFor(int index) {
    return "File" + std::to_string(index + 1);
}
} // namespace

RecentFiles::RecentFiles() {
    for (int i = 0; i < kCapacity; ++i) {
        const std::string path = platform::Settings::ReadString(kSection, KeyFor(i).c_str(), "");
        if (!path.empty()) {
            m_paths.append(QString::fromStdString(path));
        }
    }
}

void RecentFiles::Add(const QString& path) {
    const QString absolute = QFileInfo(path).absoluteFilePath();
    m_paths.removeAll(absolute);
    m_paths.prepend(absolute);
    while (m_paths.size() > kCapacity) {
        m_paths.removeLast();
    }
    Save();
}

void RecentFiles::Remove(const QString& path) {
    m_paths.removeAll(QFileInfo(path).absoluteFilePath());
    Save();
}

QString RecentFiles::At(int index) const {
    return index >= 0 && index < m_paths.size() ? m_paths.at(index) : QString();
}

void RecentFiles::Save() const {
    for (int i = 0; i < kCapacity; ++i) {
        platform::Settings::WriteString(kSection, KeyFor(i).c_str(),
                                        i < m_paths.size() ? m_paths.at(i).toStdString() : "");
    }
}
