#pragma once

#include <QDialog>

class QLineEdit;
class QRadioButton;
class QLabel;

struct NewImageValues {
    int width = 640;
    int height = 480;
    int dpi = 72;
    int contents = 0; // 0 white, 1 the background colour
};

// "Create New Image": size, resolution and contents of a new picture, with
// the resulting data size. Out-of-range numbers keep the dialog open.
class NewImageDialog : public QDialog {
    Q_OBJECT
public:
    NewImageDialog(const NewImageValues& values, QWidget* parent = nullptr);

    NewImageValues Values() const;
    QLineEdit* WidthEdit() const { return m_width; }
    QLineEdit* HeightEdit() const { return m_height; }
    QLineEdit* ResolutionEdit() const { return m_dpi; }
    QRadioButton* BackgroundChoice() const { return m_background; }
    QString SizeText() const;

    void accept() override;

private:
    void UpdateSize();

    QLineEdit* m_width;
    QLineEdit* m_height;
    QLineEdit* m_dpi;
    QRadioButton* m_white;
    QRadioButton* m_background;
    QLabel* m_size;
};
