#include "tools/select/AToolSelectMagic.h"

#include "selection/MagicWand.h"
#include "view/CViewWindow.h"

bool AToolSelectMagic::AcceptsPress(QPoint image) const {
    return image.x() >= 0 && image.y() >= 0 && image.x() < State().imageWidth &&
           image.y() < State().imageHeight;
}

void AToolSelectMagic::BeginShape(const PenEvent&, QPoint image) {
    const WandSettings settings = WandSettings::Read();
    StopOutlineTimer();
    CommandContext context = Context();
    RunMagicWand(context, image.x(), image.y(), CombineOf(DragMode()), settings.tolerance,
                 settings.continuous);
    Window()->InvalidateAll();
    RestartOutlineIfSelected();
}
