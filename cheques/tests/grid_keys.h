#pragma once
// Typing into a grid as a user does in a real window: the current cell's editor (opened now, or
// already open after the Tab before it) takes the keys, and Tab commits it and moves on; the
// first row started with the grid's key.
#include <gtest/gtest.h>

#include <QTableView>
#include <QTest>

namespace tr::cheques::testing {

inline void typeInCell(QTableView* grid, const QString& text) {
    grid->edit(grid->currentIndex());
    // The open cell editor: the visible widget over the grid's cells.
    QWidget* editor = nullptr;
    for (QWidget* e : grid->viewport()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        if (e->isVisible()) editor = e->focusProxy() ? e->focusProxy() : e;
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Tab);
}

// The window brought forward and the first row of its grid started with Alt+1, as the grid's
// caption says.
inline void startFirstRow(QWidget* window, QTableView* grid) {
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_1, Qt::AltModifier);
}

}  // namespace tr::cheques::testing
