#include "app/ClipboardExchange.h"

#include "image/CBriselDoc.h"
#include "image/CDibImage.h"
#include "image/DibHelpers.h"
#include "ops/ClipboardPayload.h"
#include "platform/MessagePresenter.h"
#include "platform/ScreenMetrics.h"
#include "platform/StringTable.h"
#include "platform/WaitCursor.h"

#include <QByteArray>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>
#include <QPainter>
#include <cstring>

namespace {

QClipboard* SystemClipboard() {
    return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) ? QGuiApplication::clipboard()
                                                                        : nullptr;
}

QByteArray BytesOf(const platform::HeapBlock& block) {
    return QByteArray(reinterpret_cast<const char*>(block.data()), static_cast<qsizetype>(block.size()));
}

// The 24-bit picture as an image other programs understand.
QImage ToQImage(const CDibImage& picture) {
    QImage image(picture.Width(), picture.Height(), QImage::Format_BGR888);
    if (image.isNull()) {
        return image;
    }
    const auto rowBytes = static_cast<std::size_t>(picture.Width()) * 3;
    for (int y = 0; y < picture.Height(); ++y) {
        std::memcpy(image.scanLine(y), picture.RowData(y), rowBytes);
    }
    image.setDotsPerMeterX(PelsPerMeterFromDpi(picture.DpiX()));
    image.setDotsPerMeterY(PelsPerMeterFromDpi(picture.DpiY()));
    return image;
}

// Another program's picture in blue-green-red order; transparent parts are
// laid over white, as they look on a page.
QImage AsTrueColor(const QImage& foreign) {
    if (!foreign.hasAlphaChannel()) {
        return foreign.convertToFormat(QImage::Format_BGR888);
    }
    QImage flat(foreign.size(), QImage::Format_BGR888);
    if (flat.isNull()) {
        return flat;
    }
    flat.fill(Qt::white);
    QPainter painter(&flat);
    painter.drawImage(0, 0, foreign);
    painter.end();
    return flat;
}

// Another program's picture as a 24-bit image at the screen's resolution.
int ReadForeignImage(const QImage& foreign, std::unique_ptr<CDibImage>& image) {
    if (foreign.isNull()) {
        return 0;
    }
    if (foreign.depth() <= 8) {
        platform::ShowMessage(platform::IDS_PASTE_TRUE_COLOR_ONLY, platform::MB_ICONEXCLAMATION);
        return 0;
    }
    if (foreign.width() > kLargestPictureSide || foreign.height() > kLargestPictureSide) {
        platform::ShowMessage(platform::IDS_NEW_SIZE_OUT_OF_RANGE, platform::MB_ICONEXCLAMATION);
        return 0;
    }
    platform::WaitCursor wait;
    const QImage rows = AsTrueColor(foreign);
    BitmapInfoHeader header;
    InitDibHeader(header, foreign.width(), foreign.height(), 24, platform::ScreenMetrics::LogicalDpiX(),
                  platform::ScreenMetrics::LogicalDpiY());
    auto picture = std::make_unique<CDibImage>();
    if (rows.isNull() || !picture->Create(&header, nullptr)) {
        platform::ShowMessage(platform::IDS_MEMORY_NOT_ENOUGH, platform::MB_ICONEXCLAMATION);
        return 0;
    }
    for (int y = 0; y < picture->Height(); ++y) {
        picture->SetRow(y, rows.constScanLine(y));
    }
    image = std::move(picture);
    return 1;
}

} // namespace

bool ClipboardExchange::HasPicture() {
    QClipboard* clipboard = SystemClipboard();
    const QMimeData* data = clipboard ? clipboard->mimeData() : nullptr;
    return data != nullptr && (data->hasFormat(kDibMime) || data->hasImage());
}

bool ClipboardExchange::HoldsOurPicture() {
    QClipboard* clipboard = SystemClipboard();
    const QMimeData* data = clipboard ? clipboard->mimeData() : nullptr;
    return data != nullptr && data->hasFormat(kDibMime);
}

void ClipboardExchange::Clear() {
    if (QClipboard* clipboard = SystemClipboard()) {
        clipboard->clear();
    }
}

int ClipboardExchange::Put(const CBriselDoc& doc) {
    QClipboard* clipboard = SystemClipboard();
    if (clipboard == nullptr || doc.GetImage() == nullptr) {
        platform::ShowMessage(platform::IDS_CLIPBOARD_OPEN_FAILED, platform::MB_ICONEXCLAMATION);
        return 0;
    }
    ClipboardPayload payload;
    const int packed = PackClipboardPayload(doc, payload);
    if (!payload.picture) {
        return 0;
    }
    auto* data = new QMimeData;
    data->setImageData(ToQImage(*doc.GetImage()));
    data->setData(kDibMime, BytesOf(payload.picture));
    if (payload.mask) {
        data->setData(kMaskMime, BytesOf(payload.mask));
    }
    clipboard->setMimeData(data);
    return packed;
}

int ClipboardExchange::Read(std::unique_ptr<CDibImage>& image, std::unique_ptr<CDibImage>& mask) {
    image.reset();
    mask.reset();
    QClipboard* clipboard = SystemClipboard();
    const QMimeData* data = clipboard ? clipboard->mimeData() : nullptr;
    if (data == nullptr) {
        platform::ShowMessage(platform::IDS_CLIPBOARD_OPEN_FAILED, platform::MB_ICONEXCLAMATION);
        return 0;
    }
    if (data->hasFormat(kDibMime)) {
        const QByteArray picture = data->data(kDibMime);
        const QByteArray maskBytes = data->data(kMaskMime);
        bool maskGiven = false;
        const int done = UnpackClipboardPayload(
            reinterpret_cast<const std::uint8_t*>(picture.constData()),
            static_cast<std::size_t>(picture.size()),
            maskBytes.isEmpty() ? nullptr : reinterpret_cast<const std::uint8_t*>(maskBytes.constData()),
            static_cast<std::size_t>(maskBytes.size()), image, mask, &maskGiven);
        if (done && !maskGiven) {
            mask.reset();
        }
        return done;
    }
    if (!data->hasImage()) {
        return 0;
    }
    return ReadForeignImage(qvariant_cast<QImage>(data->imageData()), image);
}
