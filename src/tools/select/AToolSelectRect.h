#pragma once

#include "tools/select/AToolSelectBox.h"

// "Select Rectangle": the dragged rectangle becomes the selection.
class AToolSelectRect : public AToolSelectBox {
public:
    AToolSelectRect() : AToolSelectBox(false) {}
};
