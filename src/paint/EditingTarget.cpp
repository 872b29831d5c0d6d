#include "paint/EditingTarget.h"

#include "image/CBriselDoc.h"

EditingTarget EditingTargetOf(CBriselDoc& doc) {
    if (doc.GetFloatImage() != nullptr) {
        return EditingTarget{doc.GetFloatImage(), -doc.FloatX(), -doc.FloatY()};
    }
    return EditingTarget{doc.GetPicture(), 0, 0};
}

bool EditingTarget::Contains(int x, int y) const {
    return image != nullptr && x + dx >= 0 && y + dy >= 0 && x + dx < image->Width() && y + dy < image->Height();
}
