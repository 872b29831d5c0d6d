#pragma once

class QBoxLayout;
class QDialog;
class QDialogButtonBox;

// OK and Cancel at the foot of `layout`, wired to the dialog's (possibly
// overridden) accept and reject.
QDialogButtonBox* AddOkCancelButtons(QDialog* dialog, QBoxLayout* layout);
