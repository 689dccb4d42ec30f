// A test with a window on the screen, and the hands to work it.
#pragma once

#include <paramdb/platform/core/lib_mgr.h>
#include <paramdb/views/qt/list_view.h>
#include <paramdb/views/qt/qt_text.h>
#include <paramdb/views/qt/views.h>

#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QVBoxLayout>
#include <gtest/gtest.h>
#include <string>
#include <vector>

// What gtest prints.
inline void PrintTo(QString const& text, std::ostream* out) {
    *out << text.toStdString();
}

class ViewTest : public testing::Test {
protected:
    ViewTest() {
        CLibMgr::SetLanguage(CLibMgr::Language::english);
        new QVBoxLayout(&m_window);
    }

    // Shows a view, with a line below it that can take the keyboard away.
    void Show(QWidget& view, QSize size = {400, 300}) {
        m_window.layout()->addWidget(&view);
        m_window.layout()->addWidget(&m_elsewhere);
        m_window.resize(size);
        m_window.show();
        m_window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_window));
        view.setFocus();
        Settle();
    }

    // Lets everything that is under way come to rest.
    static void Settle() {
        QApplication::processEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::processEvents();
    }

    // Presses and releases the left button at a cell; the place is counted from its upper left corner, its
    // middle for a point with x below 0.
    static void ClickCell(paramdb::qt::ListView& view, int row, int column, Qt::KeyboardModifiers keys = {},
                          QPoint place = {-1, 0}) {
        auto& table = view.Table();
        QModelIndex const index = table.model()->index(row, column);
        table.scrollTo(index);
        QRect const cell = table.visualRect(index);
        QPoint const point = place.x() < 0 ? cell.center() : cell.topLeft() + place;
        QTest::mouseClick(table.viewport(), Qt::LeftButton, keys, point);
        Settle();
    }
    static void ClickHeading(paramdb::qt::ListView& view, int column) {
        QHeaderView& header = *view.Table().horizontalHeader();
        int const x = header.sectionViewportPosition(column) + header.sectionSize(column) / 2;
        QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, QPoint(x, header.height() / 2));
        Settle();
    }
    static void Press(QWidget& widget, Qt::Key key, Qt::KeyboardModifiers keys = {}) {
        QTest::keyClick(&widget, key, keys);
        Settle();
    }
    static void Type(QWidget& widget, char const* text) {
        QTest::keyClicks(&widget, QString::fromUtf8(text));
        Settle();
    }

    // The texts of a column as they are shown.
    static std::vector<std::string> Shown(paramdb::qt::ListView& view, int column = 0) {
        std::vector<std::string> texts;
        auto const& model = *view.Table().model();
        for (int row = 0; row < model.rowCount(); ++row)
            texts.push_back(model.index(row, column).data().toString().toStdString());
        return texts;
    }

    paramdb::qt::Views m_views;
    QLineEdit m_elsewhere; // outlives the window that it stands in: see the destructor
    QWidget m_window;

    ~ViewTest() override {
        CLibMgr::ResetLanguage();
        m_elsewhere.setParent(nullptr);
        while (QLayoutItem* const item = m_window.layout()->takeAt(0)) {
            if (item->widget())
                item->widget()->setParent(nullptr);
            delete item;
        }
    }
};
