#pragma once

class CMainFrame;

// Cut, Copy, Paste and Paste as New of the Edit menu: the clipboard exchange
// on one side, the edit commands and the view's follow-up on the other.
class ClipboardCommands {
public:
    // Puts the edit target on the clipboard and marks the frame as holding
    // clipboard data, so that Exit asks whether to leave it there.
    static void Copy(CMainFrame& frame);
    // Copy, then Clear; nothing is cleared when the copy failed.
    static void Cut(CMainFrame& frame);
    // The clipboard's picture floats over the view's top-left visible pixel,
    // with its own mask or, without one, fully selected.
    static void Paste(CMainFrame& frame);
    // After the save-changes question, the clipboard's picture becomes a new,
    // untitled picture shown at actual size; the undo history is emptied.
    static void PasteAsNew(CMainFrame& frame);
    // Before the main window closes: when this program put a picture on the
    // clipboard and it is still there, asks whether other programs may keep
    // it; No empties the clipboard. Another program's data is never touched.
    static void OfferOnExit(CMainFrame& frame);
};
