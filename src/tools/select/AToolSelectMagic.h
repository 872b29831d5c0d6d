#pragma once

#include "tools/select/AToolSelect.h"

// "Select Magic Wand": a tap inside the picture selects the pixels whose
// colour is within the tolerance of the tapped one, connected to it or all
// over the picture ("Magic Wand Options"). Shift adds them to the selection,
// Ctrl removes them; a tap on the selection drags it.
class AToolSelectMagic : public AToolSelect {
protected:
    bool AcceptsPress(QPoint image) const override;
    void BeginShape(const PenEvent& pen, QPoint image) override;
};
