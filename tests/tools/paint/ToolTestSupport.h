#pragma once

#include "image/DibHelpers.h"
#include "support/ImageFixtures.h"
#include "support/TestViewHost.h"
#include "view/CBriselView.h"
#include "view/CViewWindow.h"
#include "tools/ToolTable.h"

#include <QApplication>
#include <QPointingDevice>
#include <QTabletEvent>
#include <QTest>
#include <gtest/gtest.h>
#include <memory>

// A shown view window over a plain picture, with the tool of an id bound to
// it. Points are picture pixels; they are turned into client points here.
class ToolWindowTest : public ::testing::Test {
protected:
    // Red on white with a square pen of 3.
    ToolWindowTest() {
        host.foreground = 0x000000FF;
        host.toolId = 33009;
        host.penSize = 3;
        host.penShape = kShapeRect;
    }

    void Open(int width, int height, ColorWord color = 0x00FFFFFF, QSize window = QSize(240, 200)) {
        auto picture = MakeImage(width, height);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                picture->SetPixel(x, y, color);
            }
        }
        host.doc.SetPicture(std::move(picture));
        host.doc.SetMask(CreateMask(width, height, false));
        view.resize(window);
        view.View()->Attach(&view, &host.doc, &host);
        view.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
        view.View()->OnInitialUpdate();
    }
    void UseTool(int id) {
        host.toolId = id;
        auto tool = tools::CreateToolView(id);
        tool->Attach(&view, &host.doc, &host);
        tool->State() = view.View()->State();
        view.ReplaceView(std::move(tool));
        view.View()->ToolActivate();
    }
    CBriselView& View() { return *view.View(); }
    const CDibImage& Picture() const { return *host.doc.GetPicture(); }
    ColorWord Pixel(int x, int y) const { return Picture().GetPixel(x, y); }
    QWidget* Port() { return view.viewport(); }
    // Client point of the middle of picture pixel (x, y).
    QPoint At(int x, int y) {
        const int z = View().Zoom();
        const QPoint screen = View().ImageToScreen({x, y});
        return z > 1 ? screen + QPoint(z / 2, z / 2) : screen;
    }

    void Press(int x, int y, Qt::KeyboardModifiers mods = {}) {
        QTest::mousePress(Port(), Qt::LeftButton, mods, At(x, y));
    }
    void MoveTo(int x, int y) { QTest::mouseMove(Port(), At(x, y)); }
    void Release(int x, int y, Qt::KeyboardModifiers mods = {}) {
        QTest::mouseRelease(Port(), Qt::LeftButton, mods, At(x, y));
    }
    void Drag(int x0, int y0, int x1, int y1, Qt::KeyboardModifiers mods = {}) {
        Press(x0, y0, mods);
        MoveTo(x1, y1);
        Release(x1, y1, mods);
    }
    // A pen sample from a tablet with the given pressure.
    void Tablet(QEvent::Type type, int x, int y, qreal pressure) {
        const QPointF local = At(x, y);
        QTabletEvent event(type, QPointingDevice::primaryPointingDevice(), local, Port()->mapToGlobal(local),
                           pressure, 0, 0, 0, 0, 0, Qt::NoModifier,
                           type == QEvent::TabletRelease ? Qt::NoButton : Qt::LeftButton,
                           type == QEvent::TabletRelease ? Qt::NoButton : Qt::LeftButton);
        QApplication::sendEvent(Port(), &event);
    }
    int CountPixels(ColorWord color) const {
        int count = 0;
        for (int y = 0; y < Picture().Height(); ++y) {
            for (int x = 0; x < Picture().Width(); ++x) {
                count += Pixel(x, y) == color ? 1 : 0;
            }
        }
        return count;
    }

    TestViewHost host;
    CViewWindow view;
};
