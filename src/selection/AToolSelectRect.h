#pragma once

#include "selection/AToolSelectBox.h"

// "Select Rectangle": the dragged rectangle becomes the selection.
class AToolSelectRect : public AToolSelectBox {
public:
    AToolSelectRect() : AToolSelectBox(false) {}
};
