#include "tools/paint/AToolPaintText.h"

#include "dialogs/InputTextDialog.h"
#include "ops/EditCommands.h"
#include "paint/TextPlacement.h"
#include "view/CViewWindow.h"

AToolPaintText::AToolPaintText() : m_font(TextFont::Read()) {}

void AToolPaintText::SaveFont() const {
    m_font.Write();
}

void AToolPaintText::FinishShape(const PenEvent&, QPoint image) {
    InputTextDialog dialog(m_font, TextFont::ReadInput(), Window());
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    m_font = dialog.Font();
    SaveFont();
    TextFont::WriteInput(dialog.Text());
    PlaceTextAt(dialog.Text(), image);
}

int AToolPaintText::PlaceTextAt(const std::string& text, QPoint at) {
    StopOutlineTimer();
    InvalidateSelection();
    CommandContext context = Context();
    EditResult result;
    const int placed = PlaceText(context, m_font, text, at.x(), at.y(), result);
    InvalidateSelection();
    RestartOutlineIfSelected();
    return placed;
}
