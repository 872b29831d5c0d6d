#pragma once

#include "image/CUndoHistory.h"
#include "ops/EditCommands.h"
#include "view/ViewHost.h"

#include <QMainWindow>
#include <functional>
#include <memory>

class CBriselApp;
class CBriselDoc;
class CBriselView;
class CDisplayRenderer;
class CViewWindow;
class CommandRouter;
class StatusDisplay;
class ToolPalette;

// The main window: it owns the menu bar, the tool palette, the view window,
// the undo history and the state the tools share (current tool, colours, pen,
// JPEG quality, pressure simulation). Commands reach their handlers through
// the CommandRouter; the frame handles tool changes, Options, the information
// dialogs, Tool Bar, Undo and Redo itself.
class CMainFrame : public QMainWindow, public ViewHost {
    Q_OBJECT
public:
    CMainFrame(CBriselApp* app, CBriselDoc& doc, CDisplayRenderer& renderer, QWidget* parent = nullptr);
    ~CMainFrame() override;

    CBriselApp* App() const { return m_app; }
    CBriselDoc* Document() const { return &m_doc; }
    CBriselView* View() const;
    CViewWindow* ViewWindow() const { return m_viewWindow; }
    CommandRouter& Router() const { return *m_router; }
    ToolPalette* Palette() const { return m_palette; }
    CUndoHistory& UndoHistory() { return m_undo; }
    const CUndoHistory& UndoHistory() const { return m_undo; }

    // Tools.
    int ToolId() const { return m_toolId; }
    void OnToolCommand(int id);
    // The current-tool-attribute request; false when the tool has no options.
    bool OnToolAttributeRequest(int param);
    bool ToolHasOptions(int id) const;

    // Frame commands.
    void OnOptions();
    void OnImageInformation();
    void OnSystemInformation();
    void OnToolBar();
    bool ToolBarVisible() const;
    // View > Pixel Grid: lines between image pixels from x 4 on, on screen only.
    void OnPixelGrid();
    bool PixelGridShown() const;
    // After a picture was opened: fitted to the window when it is larger and
    // the option asks for it.
    void FitLargePicture();
    // Options: "Fit large pictures to the window when opening" (on by default).
    static bool FitsLargePictures();
    static void SetFitsLargePictures(bool on);
    void OnUndo();
    void OnRedo();
    // An Image or Filter menu command: its dialog first when it has one.
    void OnImageCommand(int id);
    // An Edit menu command of the edit-command table, with the view following
    // up: repaint, new picture size, selection outline on or off.
    void OnEditCommand(int id);
    // Runs one edit command under the wait cursor with the selection outline
    // stopped, then repaints and restarts the outline as the result says.
    void RunEditCommand(const std::function<int(CommandContext&, EditResult&)>& command);

    // Shared state.
    ColorWord Foreground() const { return m_colors[0]; }
    ColorWord Background() const { return m_colors[1]; }
    int PenSize() const override { return m_penSize; }
    int PenShape() const override { return m_penShape; }
    int JpegQuality() const { return m_jpegQuality; }
    void SetJpegQuality(int quality);
    void SetPressureSimulation(bool on);
    bool AlternativeLayout() const { return m_alternativeLayout; }
    // Set when this program has put image data on the clipboard.
    bool HasClipboardData() const { return m_clipboardData; }
    void SetClipboardData(bool value) { m_clipboardData = value; }
    // Closes the window as Exit and the window's close button do: the
    // clipboard question, then the save-changes question.
    void Exit();

    // The caption: the document's name, the modified mark, the zoom when it
    // is not actual size, then the program's name.
    void SetDocumentName(const QString& name);
    QString DocumentName() const { return m_documentName; }
    StatusDisplay* Status() const { return m_status; }
    // Binds the view to the document's picture as a fresh display.
    void InitialUpdate();
    // Refreshes enabling after a change that the router did not see.
    void StateChanged();

    // ViewHost
    CommandContext EditingContext() override;
    CDisplayRenderer& Renderer() override { return m_renderer; }
    void ShowZoomSuffix(const std::string& suffix) override;
    void ShowToolStatus(const std::string& text) override;
    void SetForegroundColor(ColorWord color) override;
    void SetBackgroundColor(ColorWord color) override;
    bool PenPressureSimulation() const override { return m_pressureSimulation; }
    int CurrentToolId() const override { return m_toolId; }
    int CurrentColorSlot() const override;

signals:
    void FileDropped(const QString& path);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void ReadSettings();
    void WriteSettings() const;
    void ConnectPalette();
    // New, Open, Save, Undo, Redo and the zoom commands as buttons.
    void BuildStandardBar();
    void ChangeColor(int slot);
    void UpdateCaption();
    // The status bar: picture size and zoom, and the pixel under the pointer.
    void BuildStatusBar();
    void ShowPictureStatus();
    void OnDocumentChanged(int hint);

    CBriselApp* m_app;
    CBriselDoc& m_doc;
    CDisplayRenderer& m_renderer;
    CUndoHistory m_undo;
    CViewWindow* m_viewWindow = nullptr;
    ToolPalette* m_palette = nullptr;
    CommandRouter* m_router = nullptr;
    int m_toolId = 33000;
    ColorWord m_colors[2] = {0x00FF0000, 0x00FFFFFF};
    int m_penSize = 8;
    int m_penShape = 2;
    int m_jpegQuality = 80;
    bool m_pressureSimulation = false;
    bool m_alternativeLayout = false;
    bool m_clipboardData = false;
    QString m_documentName;
    std::string m_zoomSuffix;
    int m_observerId = 0;
    StatusDisplay* m_status = nullptr;
};
