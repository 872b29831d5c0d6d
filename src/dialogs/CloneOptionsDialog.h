#pragma once

#include <QDialog>

class QCheckBox;

// "Clone Stamp Options": whether the clone offset stays for later strokes
// until a new source point is set ("Aligned") or every stroke starts again
// from the source point. Kept under "PaintClone"/"Aligned" (1 aligned, the
// default; 0 not).
class CloneOptionsDialog : public QDialog {
    Q_OBJECT
public:
    explicit CloneOptionsDialog(QWidget* parent = nullptr);

    static bool ReadAligned();
    // The palette's options request for the Clone Stamp.
    static void Open(QWidget* parent);

    QCheckBox* Aligned() const { return m_aligned; }

    void accept() override;

private:
    QCheckBox* m_aligned;
};
