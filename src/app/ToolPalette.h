#pragma once

#include "image/DibTypes.h"
#include "tools/ToolTable.h"

#include <QToolBar>
#include <array>
#include <string>

class QButtonGroup;
class QMenu;
class QToolButton;

// The dockable tool palette: eight tool buttons (five of them stand for a
// group and remember the member last chosen), the foreground and background
// colour buttons, the pen shape and size control and the button that opens
// the current tool's options.
class ToolPalette : public QToolBar {
    Q_OBJECT
public:
    ToolPalette(ColorWord foreground, ColorWord background, int penSize, int penShape,
                QWidget* parent = nullptr);

    // The key that clicks palette button `button` ("Ctrl+1" ...), and the key
    // that changes the foreground (slot 0) or background (1) colour.
    static std::string ButtonShortcut(int button);
    static std::string ColorShortcut(int slot);

    // Highlights the button that offers `toolId` and makes it that group's
    // remembered member. Ids no button offers change nothing.
    void HighlightTool(int toolId);
    void SelectButton(int button);
    int HighlightedButton() const { return m_highlighted; }
    int RememberedTool(int button) const { return m_remembered[static_cast<std::size_t>(button)]; }
    QToolButton* ToolButton(int button) const { return m_buttons[static_cast<std::size_t>(button)]; }
    QToolButton* OptionsButton() const { return m_options; }
    QToolButton* ColorButton(int slot) const { return slot == 0 ? m_foreground : m_background; }
    QToolButton* PenButton() const { return m_pen; }
    // The list of a group's members while it is open, else null.
    QMenu* OpenGroupList() const { return m_groupList; }

    void SetColors(ColorWord foreground, ColorWord background);
    // 0: the foreground colour is current, 1: the background colour.
    int CurrentColorSlot() const { return m_currentSlot; }
    void SetOptionsAvailable(bool available);

signals:
    void ToolChosen(int toolId);
    void ColorChangeRequested(int slot);
    void CurrentColorSlotChanged(int slot);
    void PenChosen(int size, int shape);
    void OptionsRequested();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void OnButtonClicked(int button);
    void OpenGroup(int button);
    void ShowMember(int button);
    void SetCurrentSlot(int slot);
    void BuildPenMenu();

    std::array<QToolButton*, tools::kPaletteButtons> m_buttons{};
    std::array<int, tools::kPaletteButtons> m_remembered{};
    QButtonGroup* m_group = nullptr;
    int m_highlighted = 0;
    QMenu* m_groupList = nullptr;
    QToolButton* m_foreground = nullptr;
    QToolButton* m_background = nullptr;
    QToolButton* m_pen = nullptr;
    QToolButton* m_options = nullptr;
    ColorWord m_colors[2] = {0, 0};
    int m_currentSlot = 0;
    int m_penSize = 1;
    int m_penShape = 2;
};
