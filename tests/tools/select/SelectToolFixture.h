#pragma once

#include "support/ImageFixtures.h"
#include "support/TestViewHost.h"
#include "view/CBriselView.h"
#include "view/CViewWindow.h"
#include "tools/ToolSwitch.h"

#include <QApplication>
#include <QMouseEvent>
#include <QScreen>
#include <QTest>
#include <gtest/gtest.h>
#include <initializer_list>
#include <memory>
#include <string>

// A view window with a gradient picture and a tool object bound to it, driven
// by mouse events sent to its viewport. Points are given in image pixels and
// sent at the top-left screen pixel of that image pixel.
class SelectToolTest : public ::testing::Test {
protected:
    template <typename Tool> Tool& Open(int width, int height, QSize window = QSize(240, 180)) {
        return Open<Tool>(MakeGradientImage(width, height), window);
    }
    template <typename Tool> Tool& Open(std::unique_ptr<CDibImage> picture, QSize window = QSize(240, 180)) {
        const int width = picture->Width();
        const int height = picture->Height();
        host.doc.SetPicture(std::move(picture));
        host.doc.SetMask(CreateMask(width, height, true));
        view.resize(window);
        view.View()->Attach(&view, &host.doc, &host);
        view.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&view));
        view.View()->OnInitialUpdate();
        SwitchToolView(view, &host.doc, &host, std::make_unique<Tool>());
        return static_cast<Tool&>(*view.View());
    }

    CBriselView& View() { return *view.View(); }
    QPoint Screen(QPoint image) { return View().ImageToScreen(image); }

    void Press(QPoint image, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::mousePress(view.viewport(), Qt::LeftButton, modifiers, Screen(image));
    }
    void Move(QPoint image, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QMouseEvent move(QEvent::MouseMove, Screen(image), view.viewport()->mapToGlobal(Screen(image)),
                         Qt::NoButton, Qt::LeftButton, modifiers);
        QApplication::sendEvent(view.viewport(), &move);
    }
    void Release(QPoint image, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::mouseRelease(view.viewport(), Qt::LeftButton, modifiers, Screen(image));
    }
    void Tap(QPoint image, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, modifiers, Screen(image));
    }
    // The pen's path through `corners`, pressed at the first and released at the last.
    void Trace(std::initializer_list<QPoint> corners, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        auto it = corners.begin();
        Press(*it, modifiers);
        for (++it; it != corners.end(); ++it) {
            Move(*it, modifiers);
        }
        Release(*(corners.end() - 1), modifiers);
    }
    void Drag(QPoint from, QPoint to, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        Press(from, modifiers);
        Move((from + to) / 2, modifiers);
        Move(to, modifiers);
        Release(to, modifiers);
    }

    // The floating selection as (left, top, right, bottom), right and bottom
    // exclusive; all zero when there is none.
    ImageRect Selection() const { return host.doc.GetFloatRect(); }
    bool Selected(int x, int y) const {
        const CDibImage* mask = host.doc.GetFloatMask();
        return mask != nullptr && mask->GetBit(x - host.doc.FloatX(), y - host.doc.FloatY()) != 0;
    }
    // The viewport painted afresh.
    QImage Shot() { return view.viewport()->grab().toImage(); }
    // What the window shows now: the viewport's part of the window's backing
    // store, with only the repaints that were asked for.
    QImage Shown() {
        const QPoint at = view.viewport()->mapTo(&view, QPoint(0, 0));
        return view.screen()
            ->grabWindow(view.winId(), at.x(), at.y(), view.viewport()->width(), view.viewport()->height())
            .toImage();
    }

    TestViewHost host;
    CViewWindow view;
};
