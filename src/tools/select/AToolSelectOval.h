#pragma once

#include "tools/select/AToolSelectBox.h"

// "Select Ellipse": the ellipse inscribed in the dragged rectangle becomes
// the selection.
class AToolSelectOval : public AToolSelectBox {
public:
    AToolSelectOval() : AToolSelectBox(true) {}
};
