#include "tools/paint/AToolPaintGradient.h"

#include "tools/paint/AToolPaintTarget.h"
#include "script/EngineOperationHandlers.h"
#include "script/EngineOperations.h"
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
    EngineOptions options;
    options.gradientMode = m_colorMode;
    options.gradientShape = m_shape;
    EngineStep step;
    step.numbers = {Start().x() + origin.x(), Start().y() + origin.y(), End().x() + origin.x(),
                    End().y() + origin.y()};
    CommandContext context = Host()->EditingContext();
    platform::WaitCursor wait;
    RunGradient(context, options, step);
}
