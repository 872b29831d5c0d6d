#include "paint/TextGlyphs.h"

#include "image/CDibImage.h"
#include "image/DibHelpers.h"
#include "platform/HeapBlock.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <algorithm>

namespace {

constexpr int kDefaultPixelSize = 12;
constexpr int kDotsPerMeterAt72Dpi = 2835;
constexpr int kGlyphThreshold = 128;
constexpr const char* kCourierNew = "Courier New";

// The pitch-and-family byte: the low bits say fixed pitch, the high nibble
// the family.
QFont::StyleHint StyleHintOf(std::uint8_t pitchAndFamily) {
    switch (pitchAndFamily & 0xF0) {
    case 0x10:
        return QFont::Serif;
    case 0x20:
        return QFont::SansSerif;
    case 0x30:
        return QFont::TypeWriter;
    case 0x40:
        return QFont::Cursive;
    case 0x50:
        return QFont::Decorative;
    default:
        return (pitchAndFamily & 0x03) == 1 ? QFont::TypeWriter : QFont::AnyStyle;
    }
}

QString FaceFor(const TextFont& description) {
    const QString face = QString::fromStdString(description.faceName);
    if (face == QLatin1String(kCourierNew) && !QFontDatabase::hasFamily(face)) {
        return QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
    }
    return face;
}

QImage At72Dpi(QImage image) {
    image.setDotsPerMeterX(kDotsPerMeterAt72Dpi);
    image.setDotsPerMeterY(kDotsPerMeterAt72Dpi);
    return image;
}

// A positive height asks for the cell height; the font engine is asked for
// the em size that gives it.
void ApplyHeight(QFont& font, std::int32_t height) {
    if (height < 0) {
        font.setPixelSize(std::max(1, -height));
        return;
    }
    if (height == 0) {
        font.setPixelSize(kDefaultPixelSize);
        return;
    }
    font.setPixelSize(height);
    const int cell = QFontMetrics(font).height();
    if (cell > 0 && cell != height) {
        font.setPixelSize(std::max(1, height * height / cell));
    }
}

// A width other than 0 asks for that average character width.
void ApplyWidth(QFont& font, std::int32_t width) {
    if (width <= 0) {
        return;
    }
    const int natural = QFontMetrics(font).averageCharWidth();
    if (natural > 0) {
        font.setStretch(std::clamp(width * 100 / natural, 1, 4000));
    }
}

} // namespace

QFont TextGlyphs::MakeFont(const TextFont& description) {
    QFont font(FaceFor(description));
    font.setStyleHint(StyleHintOf(description.pitchAndFamily), QFont::NoAntialias);
    font.setWeight(static_cast<QFont::Weight>(
        description.weight <= 0 ? TextFont::kRegularWeight : std::clamp(description.weight, 1, 1000)));
    font.setItalic(description.italic != 0);
    font.setUnderline(description.underline != 0);
    font.setStrikeOut(description.strikeOut != 0);
    font.setKerning(false);
    ApplyHeight(font, description.height);
    ApplyWidth(font, description.width);
    return font;
}

bool TextGlyphs::SetFont(const TextFont& font) {
    m_ready = qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
    if (m_ready) {
        m_font = MakeFont(font);
    }
    return m_ready;
}

std::string TextGlyphs::FaceInUse() const {
    return m_ready ? QFontInfo(m_font).family().toStdString() : std::string();
}

int TextGlyphs::Width(const std::string& text) const {
    if (!m_ready) {
        return 0;
    }
    const QFontMetrics metrics(m_font);
    const int advance = metrics.horizontalAdvance(QString::fromStdString(text));
    return m_font.italic() ? advance + metrics.averageCharWidth() : advance;
}

int TextGlyphs::Height() const {
    return m_ready ? QFontMetrics(m_font).height() : 0;
}

int TextGlyphs::AverageCharWidth() const {
    return m_ready ? QFontMetrics(m_font).averageCharWidth() : 0;
}

std::unique_ptr<CDibImage> TextGlyphs::RenderMask(const std::string& text, int width, int height) const {
    if (!m_ready || width <= 0 || height <= 0) {
        return nullptr;
    }
    auto mask = CreateMask(width, height, true);
    platform::HeapBlock row = platform::HeapBlock::Allocate(DibRowBytes(width, 1));
    QImage glyphs = At72Dpi(QImage(width, height, QImage::Format_Grayscale8));
    if (!mask || !row || glyphs.isNull()) {
        return nullptr;
    }
    glyphs.fill(0);
    QPainter painter(&glyphs);
    painter.setRenderHint(QPainter::TextAntialiasing, false);
    painter.setFont(m_font);
    painter.setPen(Qt::white);
    painter.drawText(0, QFontMetrics(m_font).ascent(), QString::fromStdString(text));
    painter.end();
    for (int y = 0; y < height; ++y) {
        const uchar* source = glyphs.constScanLine(y);
        std::uint8_t* bits = row.data();
        std::fill(bits, bits + row.size(), std::uint8_t{0});
        for (int x = 0; x < width; ++x) {
            if (source[x] >= kGlyphThreshold) {
                bits[x >> 3] |= static_cast<std::uint8_t>(0x80 >> (x & 7));
            }
        }
        mask->SetRow(y, bits);
    }
    return mask;
}
