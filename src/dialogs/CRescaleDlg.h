#pragma once

#include "dialogs/CommandDialog.h"

class CBriselDoc;
class QButtonGroup;
class QCheckBox;
class QLineEdit;

// "Rescale": the new width and height in pixels, centimetres or inches (the
// unit is remembered with Image Information's under "Unit"), "Keep aspect
// ratio", and the resolution, which also converts between the units. Sizes
// are kept in pixels; a field is read back only once the user has typed in it,
// so that showing a size in centimetres never changes it by rounding.
class CRescaleDlg : public CommandDialog {
    Q_OBJECT
public:
    // Unit codes as stored under "Unit" (the order of Image Information's list).
    enum Unit : int { kCm = 0, kInch = 1, kPixel = 2 };
    // Width and height stay within 1..kLargestPictureSide, the resolution
    // within 1..kMaxResolution.

    explicit CRescaleDlg(const CBriselDoc& doc, QWidget* parent = nullptr);

    std::vector<int> CommandValues() const override;
    QLineEdit* WidthEdit() const { return m_widthEdit; }
    QLineEdit* HeightEdit() const { return m_heightEdit; }
    QLineEdit* ResolutionEdit() const { return m_dpiEdit; }
    QCheckBox* KeepAspect() const { return m_keepAspect; }
    QButtonGroup* Units() const { return m_units; }
    int PixelWidth() const { return static_cast<int>(m_width); }
    int PixelHeight() const { return static_cast<int>(m_height); }

protected:
    bool Validate() override;

private:
    int CurrentUnit() const;
    double PixelsPerUnit() const;
    QString Format(double pixels) const;
    bool Parse(const QLineEdit* edit, double& pixels) const;
    void ShowSizes();
    void WidthTyped();
    void HeightTyped();
    void ResolutionTyped();
    void UnitChosen();
    void AspectToggled(bool keep);
    void FollowAspect(bool fromWidth);
    void RememberLengths();

    int m_sourceWidth;
    int m_sourceHeight;
    double m_width; // pixels; beyond the range only while the user types
    double m_height;
    int m_dpi;
    double m_widthInches; // the lengths a change of resolution keeps
    double m_heightInches;
    bool m_widthTyped = false;
    bool m_heightTyped = false;
    QLineEdit* m_widthEdit;
    QLineEdit* m_heightEdit;
    QLineEdit* m_dpiEdit;
    QCheckBox* m_keepAspect;
    QButtonGroup* m_units;
};
