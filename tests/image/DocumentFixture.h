#pragma once

#include "image/CBriselDoc.h"
#include "image/CUndoHistory.h"
#include "image/DibHelpers.h"
#include "support/ImageFixtures.h"
#include "support/ScriptedPresenter.h"

#include <gtest/gtest.h>

// A document holding a 20 x 10 picture in which every pixel differs, with an
// empty selection mask and an undo history.
class DocumentTest : public ::testing::Test {
protected:
    void SetUp() override {
        doc.SetPicture(MakeGradientImage(20, 10));
        doc.SetMask(CreateMask(20, 10, true));
        original = DuplicateImage(doc.GetPicture());
    }
    void TearDown() override { platform::HeapBlock::FailNextAllocations(0); }

    void Paint(CDibImage& image, ColorWord color) {
        for (int y = 0; y < image.Height(); ++y) {
            for (int x = 0; x < image.Width(); ++x) {
                image.SetPixel(x, y, color);
            }
        }
    }

    ScriptedPresenter presenter;
    CBriselDoc doc;
    CUndoHistory undo;
    std::unique_ptr<CDibImage> original;
};
