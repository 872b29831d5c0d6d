#pragma once

#include "dialogs/CommandDialog.h"
#include "dialogs/CommandDialogs.h"
#include "image/CBriselDoc.h"
#include "image/CUndoHistory.h"
#include "image/DibHelpers.h"
#include "ops/OpsCommandTable.h"
#include "support/ImageFixtures.h"
#include "support/ScriptedPresenter.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include <cstring>
#include <functional>

// A document with a picture in which every pixel differs, and a twin document
// on which the core commands run to give the expected results.
class CommandDialogTest : public ::testing::Test {
protected:
    void SetUp() override { UsePicture(MakeGradientImage(40, 30)); }

    void UsePicture(std::unique_ptr<CDibImage> picture) {
        twin.SetPicture(DuplicateImage(picture.get()));
        twin.SetMask(CreateMask(picture->Width(), picture->Height(), true));
        doc.SetMask(CreateMask(picture->Width(), picture->Height(), true));
        doc.SetPicture(std::move(picture));
        original = DuplicateImage(doc.GetPicture());
    }

    // Runs the menu command's dialog as the frame does; `drive` works the
    // open dialog and closes it (a dialog left open is cancelled).
    int RunMenuCommand(int commandId, const std::function<void(CommandDialog&)>& drive) {
        const OpsCommand* command = FindOpsCommand(commandId);
        const commanddialogs::Runner run = commanddialogs::Find(command->dialog);
        QTimer::singleShot(0, [drive] {
            auto* dialog = qobject_cast<CommandDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            drive(*dialog);
            if (dialog->isVisible()) {
                dialog->reject();
            }
        });
        return run(nullptr, ctx, *command);
    }

    static void ClickOk(CommandDialog& dialog) { QTest::mouseClick(dialog.OkButton(), Qt::LeftButton); }
    // A radio button takes clicks on its circle and text only, not on the
    // rest of its width.
    static void ClickButton(QAbstractButton* button) {
        QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(4, button->height() / 2));
    }
    static void Retype(QLineEdit* edit, const char* text) {
        edit->selectAll();
        QTest::keyClicks(edit, text);
    }

    bool PictureUntouched() const {
        const CDibImage& now = *doc.GetPicture();
        return now.ImageBytes() == original->ImageBytes() &&
               std::memcmp(now.Bits(), original->Bits(), now.ImageBytes()) == 0;
    }
    bool MatchesTwin() const { return SamePixels(*doc.GetPicture(), *twin.GetPicture()); }

    ScriptedPresenter presenter;
    CBriselDoc doc;
    CUndoHistory undo;
    CommandContext ctx{doc, undo, 0x00204080, 0x00F0E0D0};
    CBriselDoc twin;
    CUndoHistory twinUndo;
    CommandContext twinCtx{twin, twinUndo, 0x00204080, 0x00F0E0D0};
    std::unique_ptr<CDibImage> original;
};
