#pragma once

#include <QDialog>

class CBriselDoc;
class QComboBox;
class QLabel;

// "Image Information": file name, data size, width and height in the chosen
// unit ("Cm", "Inch", "Pixel", remembered at once) and the resolution.
class ImageInfoDialog : public QDialog {
    Q_OBJECT
public:
    enum Unit { kCm = 0, kInch = 1, kPixel = 2 };

    ImageInfoDialog(const CBriselDoc& doc, bool alternativeLayout, QWidget* parent = nullptr);

    QString FileNameText() const;
    QString ImageSizeText() const;
    QString WidthText() const;
    QString HeightText() const;
    QComboBox* UnitList() const { return m_unit; }

    // One length in the unit: pixel counts grouped, inches and centimetres
    // with two decimals (0 when the resolution is 0).
    static QString Length(int pixels, int dpi, int unit);
    // The name the program gives a picture that has no file yet.
    static QString UntitledName();

private:
    void ShowSize();

    const CBriselDoc& m_doc;
    QLabel* m_fileName;
    QLabel* m_imageSize;
    QLabel* m_width;
    QLabel* m_height;
    QComboBox* m_unit;
};
