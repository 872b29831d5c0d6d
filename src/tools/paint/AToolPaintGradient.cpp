#include "tools/paint/AToolPaintGradient.h"

#include "tools/paint/AToolPaintTarget.h"
#include "paint/PaintCommands.h"
#include "platform/Settings.h"
#include "platform/WaitCursor.h"
#include "view/ViewHost.h"

#include <QPainter>
#include <algorithm>

void AToolPaintGradient::ReadOptions() {
    m_colorMode = std::clamp(platform::Settings::ReadInt("Gradient", "ColorMode", 0), 0, 2);
    m_shape = std::clamp(platform::Settings::ReadInt("Gradient", "Shape", 0), 0, 3);
}

void AToolPaintGradient::ToolActivate() {
    AToolPaintDrag::ToolActivate();
    ReadOptions();
}

bool AToolPaintGradient::AcceptsStart(QPoint) {
    // The dialog may have changed the options since activation. A drag may
    // start anywhere: its points only place the ramp.
    ReadOptions();
    return painttarget::Image(Document()) != nullptr;
}

void AToolPaintGradient::DrawBand(QPainter& painter) const {
    painter.drawLine(ScreenOf(Start()), ScreenOf(End()));
}

ImageRect AToolPaintGradient::BandArea() const {
    return ImageRect{std::min(Start().x(), End().x()), std::min(Start().y(), End().y()),
                     std::max(Start().x(), End().x()), std::max(Start().y(), End().y())};
}

void AToolPaintGradient::Finish() {
    const QPoint origin = painttarget::Origin(Document());
    const QPoint from = Start() + origin;
    const QPoint to = End() + origin;
    CommandContext context = Host()->EditingContext();
    platform::WaitCursor wait;
    DrawGradient(context, m_shape, m_colorMode, from.x(), from.y(), to.x(), to.y());
}
