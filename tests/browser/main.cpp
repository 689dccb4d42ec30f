// The tests of the browser are a program of their own: they need a QApplication. Without a screen they run on
// the offscreen platform; QT_QPA_PLATFORM names another.
#include <paramdb/platform/core/lib_mgr.h>
#include <paramdb/views/qt/views.h>

#include <QtWidgets/QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QApplication const application(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    CLibMgr::SetLanguage(CLibMgr::Language::english);
    paramdb::qt::Views const views;
    return RUN_ALL_TESTS();
}
