#include "paint/StrokeReference.h"

#include "image/CDibImage.h"
#include "image/DibHelpers.h"
#include "ops/CImageFilter.h"

StrokeReference::StrokeReference() = default;
StrokeReference::~StrokeReference() = default;

int StrokeReference::TakeCopy(const CDibImage& picture) {
    m_image = DuplicateImage(&picture);
    return m_image ? 1 : 0;
}

int StrokeReference::TakeFiltered(const CDibImage& picture, int strength) {
    m_image.reset();
    auto filtered = std::make_unique<CDibImage>();
    if (!filtered->Create(picture.Header(), picture.Palette())) {
        return 0;
    }
    CImageFilter filter;
    filter.SetTarget(filtered.get());
    filter.SetSource(&picture);
    if (!filter.Convolve3x3(strength)) {
        return 0;
    }
    m_image = std::move(filtered);
    return 1;
}

void StrokeReference::Release() {
    m_image.reset();
}
