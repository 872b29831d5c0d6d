#pragma once

#include <QString>
#include <QStringList>

// The last eight files opened or saved, newest first, kept in the settings
// (section "RecentFiles", keys "File1".."File8").
class RecentFiles {
public:
    static constexpr int kCapacity = 8;

    RecentFiles();
    void Add(const QString& path);
    void Remove(const QString& path);
    int Count() const { return static_cast<int>(m_paths.size()); }
    QString At(int index) const;
    const QStringList& Paths() const { return m_paths; }

private:
    void Save() const;
    QStringList m_paths;
};
