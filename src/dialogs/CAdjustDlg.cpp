#include "dialogs/CAdjustDlg.h"

#include "dialogs/LivePreview.h"
#include "dialogs/NumberTriple.h"
#include "image/CDibImage.h"
#include "platform/StringTable.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>

namespace {
QString Title(int kind) {
    switch (kind) {
    case kAdjustHueSaturation:
        return QStringLiteral("Hue/Saturation");
    case kAdjustGamma:
        return QStringLiteral("Gamma");
    default:
        return QStringLiteral("Brightness/Contrast");
    }
}

QString Text(int id) {
    const std::string_view text = platform::LoadString(id);
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
} // namespace

CAdjustDlg::CAdjustDlg(int kind, CommandContext& ctx, QWidget* parent)
    : CommandDialog(Title(kind), parent), m_ctx(ctx), m_settings(AdjustSettings::Defaults(kind)) {
    auto* form = new QFormLayout;
    if (kind != kAdjustHueSaturation) {
        m_channels = new QComboBox;
        for (int slot = 0; slot < 4; ++slot) {
            m_channels->addItem(Text(platform::IDS_CHANNEL_ALL + slot));
        }
        form->addRow(QStringLiteral("Channel :"), m_channels);
        connect(m_channels, &QComboBox::currentIndexChanged, this, &CAdjustDlg::ChooseChannel);
    }
    switch (kind) {
    case kAdjustHueSaturation:
        m_first = AddNumber(form, QStringLiteral("Hue :"), -180, 180, 0, 10);
        m_second = AddNumber(form, QStringLiteral("Saturation :"), -100, 100, 0, 10);
        break;
    case kAdjustGamma:
        m_first = AddNumber(form, QStringLiteral("Gamma :"), 1, 79, m_settings.first[0], 10);
        form->addRow(new QLabel(QStringLiteral("(1...79)")));
        break;
    default:
        m_first = AddNumber(form, QStringLiteral("Brightness :"), -100, 100, 0, 10);
        m_second = AddNumber(form, QStringLiteral("Contrast :"), -100, 100, 0, 10);
        break;
    }
    Body()->insertLayout(0, form);
    // Made after the form, so that Tab reaches it after the numbers.
    if (kind == kAdjustHueSaturation) {
        connect(AddPreviewButton(), &QPushButton::clicked, this, &CAdjustDlg::ApplyPreview);
    }
    connect(m_first, &NumberTriple::ValueChanged, this, &CAdjustDlg::StoreFirst);
    if (m_second != nullptr) {
        connect(m_second, &NumberTriple::ValueChanged, this, &CAdjustDlg::StoreSecond);
    }
}

int CAdjustDlg::Open() {
    if (!StartPreview(m_ctx)) {
        return 0;
    }
    ApplyPreview();
    return 1;
}

int CAdjustDlg::Slot() const {
    return m_channels != nullptr ? m_channels->currentIndex() : 0;
}

void CAdjustDlg::StoreFirst(int value) {
    if (!m_showingSlot) {
        m_settings.first[Slot()] = value;
        AfterStore();
    }
}

void CAdjustDlg::StoreSecond(int value) {
    if (!m_showingSlot) {
        m_settings.second[Slot()] = value;
        AfterStore();
    }
}

// Every change previews at once; the worker computes only the newest values.
void CAdjustDlg::AfterStore() {
    ApplyPreview();
}

void CAdjustDlg::ChooseChannel(int channel) {
    m_settings.channel = channel;
    m_showingSlot = true;
    m_first->SetValue(m_settings.first[channel]);
    if (m_second != nullptr) {
        m_second->SetValue(m_settings.second[channel]);
    }
    m_showingSlot = false;
    ApplyPreview();
}

void CAdjustDlg::ApplyPreview() {
    if (Preview() == nullptr) {
        return;
    }
    Preview()->Request([settings = m_settings](const CDibImage& source, CDibImage& target) {
        CColorAdjuster adjuster;
        adjuster.SetTarget(&target);
        adjuster.SetSource(&source);
        ApplyAdjustSettings(adjuster, settings);
    });
}

