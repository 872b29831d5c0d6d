#include "app/CMainFrame.h"

#include "app/CBriselApp.h"
#include "app/ClipboardCommands.h"
#include "app/CommandIds.h"
#include "app/CommandRouter.h"
#include "app/FrameDialogs.h"
#include "app/MenuBuilder.h"
#include "app/StatusDisplay.h"
#include "app/ToolIcons.h"
#include "app/ToolPalette.h"
#include "dialogs/CommandDialogs.h"
#include "dialogs/FillColorDialog.h"
#include "dialogs/ImageInfoDialog.h"
#include "view/CDisplayRenderer.h"
#include "formats/JpegQuality.h"
#include "image/CBriselDoc.h"
#include "image/UndoLimits.h"
#include "ops/EditCommandTable.h"
#include "ops/OpsCommandTable.h"
#include "platform/Settings.h"
#include "platform/StringTable.h"
#include "platform/WaitCursor.h"
#include "view/CBriselView.h"
#include "view/CViewWindow.h"
#include "tools/ToolSwitch.h"
#include "tools/ToolTable.h"

#include <QClipboard>
#include <QCloseEvent>
#include <QColorDialog>
#include <QGuiApplication>
#include <QLabel>
#include <QMenuBar>
#include <QScreen>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>

namespace {
const char* const kMain = "MainSection";
const char* const kTools = "ToolSection";
const char* const kFitKey = "FitLargePictures";

ColorWord ReadColor(const char* prefix, int r, int g, int b) {
    const std::string p(prefix);
    return MakeColorWord(platform::Settings::ReadInt(kMain, (p + "-R").c_str(), r),
                         platform::Settings::ReadInt(kMain, (p + "-G").c_str(), g),
                         platform::Settings::ReadInt(kMain, (p + "-B").c_str(), b));
}

void WriteColor(const char* prefix, ColorWord color) {
    const std::string p(prefix);
    platform::Settings::WriteInt(kMain, (p + "-R").c_str(), RedOf(color));
    platform::Settings::WriteInt(kMain, (p + "-G").c_str(), GreenOf(color));
    platform::Settings::WriteInt(kMain, (p + "-B").c_str(), BlueOf(color));
}

bool LandscapeScreen() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen != nullptr && screen->size().width() > screen->size().height();
}
} // namespace

CMainFrame::CMainFrame(CBriselApp* app, CBriselDoc& doc, CDisplayRenderer& renderer, QWidget* parent)
    : QMainWindow(parent), m_app(app), m_doc(doc), m_renderer(renderer) {
    setObjectName(QStringLiteral("MainFrame"));
    setWindowIcon(icons::Application());
    ReadSettings();
    m_undo.SetLimits(undolimits::Stored());
    m_undo.BeginCommand(m_doc, tools::Label(m_toolId));
    m_alternativeLayout = LandscapeScreen();

    m_viewWindow = new CViewWindow(this);
    m_viewWindow->View()->Attach(m_viewWindow, &m_doc, this);
    setCentralWidget(m_viewWindow);
    connect(m_viewWindow, &CViewWindow::FileDropped, this, &CMainFrame::FileDropped);

    m_router = new CommandRouter(*this);
    m_router->CreateActions(this);
    MenuBuilder::Build(*menuBar(), *m_router);

    BuildStandardBar();
    BuildStatusBar();

    m_palette = new ToolPalette(m_colors[0], m_colors[1], m_penSize, m_penShape, this);
    addToolBar(Qt::LeftToolBarArea, m_palette);
    ConnectPalette();
    m_palette->HighlightTool(m_toolId);

    m_observerId = m_doc.AddViewObserver([this](int hint) { OnDocumentChanged(hint); });
    // Paste follows what any program puts on the clipboard.
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, m_router, &CommandRouter::UpdateAll);
    m_doc.SetModifiedListener([this] { setWindowModified(m_doc.IsModified()); });
    SetDocumentName(ImageInfoDialog::UntitledName());
    m_router->UpdateAll();
}

CMainFrame::~CMainFrame() {
    m_doc.RemoveViewObserver(m_observerId);
    m_doc.SetModifiedListener(nullptr);
    WriteSettings();
}

CBriselView* CMainFrame::View() const {
    return m_viewWindow->View();
}

void CMainFrame::BuildStandardBar() {
    constexpr int kButtons[] = {cmd::kNew,    cmd::kOpen,        cmd::kSave,        0,
                                cmd::kUndo,   cmd::kRedo,        0,                 cmd::kZoomIn,
                                cmd::kZoomOut, cmd::kActualImage, cmd::kFitInWindow, cmd::kFullScreen};
    QToolBar* bar = addToolBar(QStringLiteral("Standard"));
    bar->setObjectName(QStringLiteral("StandardBar"));
    bar->setIconSize(QSize(22, 22));
    for (const int id : kButtons) {
        if (id == 0) {
            bar->addSeparator();
        } else {
            bar->addAction(m_router->Action(id));
        }
    }
}

void CMainFrame::BuildStatusBar() {
    m_status = new StatusDisplay(*statusBar(), m_doc);
    connect(m_viewWindow, &CViewWindow::PointerMoved, m_status, &StatusDisplay::ShowPointer);
}

void CMainFrame::ShowPictureStatus() {
    if (m_status != nullptr) {
        m_status->ShowDocument(View()->Zoom());
    }
}

void CMainFrame::ReadSettings() {
    m_colors[0] = ReadColor("Foreground", 0, 0, 255);
    m_colors[1] = ReadColor("Background", 255, 255, 255);
    m_penSize = std::clamp(platform::Settings::ReadInt(kTools, "PenSize", 8), 1, 32);
    m_penShape = std::clamp(platform::Settings::ReadInt(kTools, "PenShape", 2), 1, 6);
    m_jpegQuality = JpegQuality::Read();
    m_pressureSimulation = platform::Settings::ReadInt(kTools, "Pressure", 0) != 0;
    m_renderer.SetPixelGrid(platform::Settings::ReadInt(kMain, "PixelGrid", 0) != 0);
}

void CMainFrame::WriteSettings() const {
    WriteColor("Foreground", m_colors[0]);
    WriteColor("Background", m_colors[1]);
    platform::Settings::WriteInt(kTools, "PenSize", m_penSize);
    platform::Settings::WriteInt(kTools, "PenShape", m_penShape);
}

void CMainFrame::ConnectPalette() {
    connect(m_palette, &ToolPalette::ToolChosen, this, [this](int id) { m_router->Execute(id); });
    connect(m_palette, &ToolPalette::ColorChangeRequested, this, &CMainFrame::ChangeColor);
    connect(m_palette, &ToolPalette::PenChosen, this, [this](int size, int shape) {
        m_penSize = size;
        m_penShape = shape;
    });
    connect(m_palette, &ToolPalette::OptionsRequested, this, [this] { OnToolAttributeRequest(1); });
    connect(m_palette, &QToolBar::visibilityChanged, m_router, &CommandRouter::UpdateAll);
}

void CMainFrame::OnToolCommand(int id) {
    if (!tools::IsToolId(m_toolId) && id == tools::kSelectRectangle) {
        m_palette->SelectButton(0);
    }
    m_toolId = id;
    m_undo.BeginCommand(m_doc, tools::Label(id));
    m_palette->HighlightTool(id);
    m_palette->SetOptionsAvailable(ToolHasOptions(id));
    if (m_viewWindow != nullptr) {
        SwitchToolView(*m_viewWindow, &m_doc, this, tools::CreateToolView(id));
    }
}

bool CMainFrame::ToolHasOptions(int id) const {
    return tools::HasToolOptions(id);
}

bool CMainFrame::OnToolAttributeRequest(int param) {
    if (param == 0) {
        return false;
    }
    return tools::OpenToolOptions(m_toolId, this);
}

void CMainFrame::OnOptions() {
    FrameDialogs::Options(*this);
}
void CMainFrame::OnImageInformation() {
    FrameDialogs::ImageInformation(*this);
}
void CMainFrame::OnSystemInformation() {
    FrameDialogs::SystemInformation(*this);
}

void CMainFrame::OnPixelGrid() {
    m_renderer.SetPixelGrid(!m_renderer.PixelGrid());
    platform::Settings::WriteInt(kMain, "PixelGrid", m_renderer.PixelGrid() ? 1 : 0);
    m_viewWindow->InvalidateAll();
}

bool CMainFrame::PixelGridShown() const {
    return m_renderer.PixelGrid();
}

void CMainFrame::FitLargePicture() {
    if (FitsLargePictures()) {
        View()->FitIfLarger();
    }
}

bool CMainFrame::FitsLargePictures() {
    return platform::Settings::ReadInt(kMain, kFitKey, 1) != 0;
}

void CMainFrame::SetFitsLargePictures(bool on) {
    platform::Settings::WriteInt(kMain, kFitKey, on ? 1 : 0);
}

void CMainFrame::OnToolBar() {
    m_palette->setVisible(!m_palette->isVisible());
}

bool CMainFrame::ToolBarVisible() const {
    return m_palette->isVisibleTo(const_cast<CMainFrame*>(this));
}

// Undo and Redo may bring a selection back or take it away: the outline
// animation runs exactly while one floats.
static void OutlineFollowsSelection(CBriselView* view, const CBriselDoc& doc) {
    if (view == nullptr) {
        return;
    }
    if (doc.GetFloatMask() != nullptr) {
        view->StartOutlineTimer();
    } else {
        view->StopOutlineTimer();
    }
}

void CMainFrame::OnUndo() {
    m_undo.Undo(m_doc);
    OutlineFollowsSelection(View(), m_doc);
}
void CMainFrame::OnRedo() {
    m_undo.Redo(m_doc);
    OutlineFollowsSelection(View(), m_doc);
}

void CMainFrame::OnImageCommand(int id) {
    const OpsCommand* command = FindOpsCommand(id);
    if (command == nullptr) {
        return;
    }
    CommandContext context = EditingContext();
    if (command->dialog != 0) {
        if (const commanddialogs::Runner run = commanddialogs::Find(command->dialog)) {
            run(this, context, *command);
        }
        return;
    }
    platform::WaitCursor wait;
    RunOpsCommand(context, *command);
}

void CMainFrame::OnEditCommand(int id) {
    const EditCommand* command = FindEditCommand(id);
    if (command == nullptr || (id == cmd::kFill && !FillColorDialog::AskAndStore(this))) {
        return;
    }
    RunEditCommand(command->run);
}

void CMainFrame::RunEditCommand(const std::function<int(CommandContext&, EditResult&)>& command) {
    CBriselView* view = View();
    view->StopOutlineTimer();
    view->InvalidateSelection();
    CommandContext context = EditingContext();
    EditResult result;
    {
        platform::WaitCursor wait;
        command(context, result);
    }
    if (result.imageSizeChanged) {
        view->OnUpdate(CBriselDoc::kHintImageSize);
    }
    m_viewWindow->InvalidateAll();
    if (result.outline) {
        view->StartOutlineTimer();
    }
}

void CMainFrame::SetJpegQuality(int quality) {
    m_jpegQuality = quality;
    JpegQuality::Write(quality);
}

void CMainFrame::SetPressureSimulation(bool on) {
    m_pressureSimulation = on;
    platform::Settings::WriteInt(kTools, "Pressure", on ? 1 : 0);
}

void CMainFrame::ChangeColor(int slot) {
    const ColorWord current = m_colors[slot];
    const QColor chosen =
        QColorDialog::getColor(QColor(RedOf(current), GreenOf(current), BlueOf(current)), this,
                               slot == 0 ? tr("Foreground Color") : tr("Background Color"));
    if (!chosen.isValid()) {
        return;
    }
    const ColorWord color = MakeColorWord(chosen.red(), chosen.green(), chosen.blue());
    slot == 0 ? SetForegroundColor(color) : SetBackgroundColor(color);
}

void CMainFrame::SetForegroundColor(ColorWord color) {
    m_colors[0] = color;
    m_palette->SetColors(m_colors[0], m_colors[1]);
}

void CMainFrame::SetBackgroundColor(ColorWord color) {
    m_colors[1] = color;
    m_palette->SetColors(m_colors[0], m_colors[1]);
}

int CMainFrame::CurrentColorSlot() const {
    return m_palette->CurrentColorSlot();
}

CommandContext CMainFrame::EditingContext() {
    return CommandContext{m_doc, m_undo, m_colors[0], m_colors[1]};
}

void CMainFrame::SetDocumentName(const QString& name) {
    m_documentName = name;
    UpdateCaption();
}

void CMainFrame::ShowToolStatus(const std::string& text) {
    if (text.empty()) {
        statusBar()->clearMessage();
    } else {
        statusBar()->showMessage(QString::fromStdString(text));
    }
}

void CMainFrame::ShowZoomSuffix(const std::string& suffix) {
    m_zoomSuffix = suffix;
    UpdateCaption();
    ShowPictureStatus();
}

void CMainFrame::UpdateCaption() {
    // "[*]" is where Qt shows the modified mark; a caption that already ends
    // with the program's display name is not given it a second time.
    QString caption = m_documentName + QStringLiteral("[*]");
    if (!m_zoomSuffix.empty() && View()->Zoom() != 1) {
        caption += QLatin1Char(' ') + QString::fromStdString(m_zoomSuffix);
    }
    caption += QStringLiteral(" \u2014 ") + QString::fromUtf8(platform::LoadString(platform::IDS_PRODUCT_NAME).data());
    setWindowTitle(caption);
    setWindowModified(m_doc.IsModified());
}

void CMainFrame::InitialUpdate() {
    View()->OnInitialUpdate();
    if (m_status != nullptr) {
        m_status->ClearPointer();
    }
    m_zoomSuffix.clear();
    UpdateCaption();
    StateChanged();
}

void CMainFrame::StateChanged() {
    m_router->UpdateAll();
    ShowPictureStatus();
}

void CMainFrame::OnDocumentChanged(int hint) {
    View()->OnUpdate(hint);
    StateChanged();
}

void CMainFrame::Exit() {
    close();
}

void CMainFrame::closeEvent(QCloseEvent* event) {
    ClipboardCommands::OfferOnExit(*this);
    if (m_app != nullptr && !m_app->CanCloseDocument()) {
        event->ignore();
        return;
    }
    event->accept();
}
