// What the window remembers from one time to the next.
//
// A thin layer over QSettings, so that each entry has its name in one place.
#pragma once

#include <paramdb/platform/signal/clavis.h>

#include <QtCore/QByteArray>
#include <QtCore/QSettings>
#include <QtCore/QString>

namespace paramdb::browser {

class Settings {
public:
    // The store is not owned and must outlive this object.
    explicit Settings(QSettings& store) : m_store(store) {}

    // As QWidget::saveGeometry and QMainWindow::saveState have them; empty at first.
    [[nodiscard]] QByteArray Geometry() const { return m_store.value(GeometryName).toByteArray(); }
    [[nodiscard]] QByteArray Layout() const { return m_store.value(LayoutName).toByteArray(); }
    void SetGeometry(QByteArray const& geometry) { m_store.setValue(GeometryName, geometry); }
    void SetLayout(QByteArray const& layout) { m_store.setValue(LayoutName, layout); }

    // Where files were opened last.
    [[nodiscard]] QString Folder() const { return m_store.value(FolderName).toString(); }
    void SetFolder(QString const& folder) { m_store.setValue(FolderName, folder); }

    // The tag of the table.
    [[nodiscard]] QString Table() const { return m_store.value(TableName).toString(); }
    void SetTable(QString const& tag) { m_store.setValue(TableName, tag); }

    [[nodiscard]] bool HideEmptyTables() const { return m_store.value(HideEmptyName, false).toBool(); }
    void SetHideEmptyTables(bool hide) { m_store.setValue(HideEmptyName, hide); }
    [[nodiscard]] bool ShowIds() const { return m_store.value(ShowIdsName, false).toBool(); }
    void SetShowIds(bool show) { m_store.setValue(ShowIdsName, show); }

    // -1 for the elements that are not there.
    [[nodiscard]] CClavis Key() const;
    void SetKey(CClavis const& key);

    [[nodiscard]] int Parameter() const { return m_store.value(ParameterName, -1).toInt(); }
    void SetParameter(int parameter) { m_store.setValue(ParameterName, parameter); }

    // In 1/min.
    [[nodiscard]] double Speed() const { return m_store.value(SpeedName, 3000.0).toDouble(); }
    void SetSpeed(double speed) { m_store.setValue(SpeedName, speed); }

    [[nodiscard]] double LineDistance() const { return m_store.value(LineDistanceName, 0.0).toDouble(); }
    void SetLineDistance(double distance) { m_store.setValue(LineDistanceName, distance); }

private:
    static constexpr char GeometryName[] = "window/geometry";
    static constexpr char LayoutName[] = "window/layout";
    static constexpr char FolderName[] = "files/folder";
    static constexpr char TableName[] = "tables/current";
    static constexpr char HideEmptyName[] = "tables/hide_empty";
    static constexpr char ShowIdsName[] = "names/show_ids";
    static constexpr char KeyName[] = "key";
    static constexpr char ParameterName[] = "parameter";
    static constexpr char SpeedName[] = "speed";
    static constexpr char LineDistanceName[] = "line_distance";

    QSettings& m_store;
};

} // namespace paramdb::browser
