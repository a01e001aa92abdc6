#pragma once
// The demo host's main window: the treasury screens in a tree and a menu grouped by subsystem
// (screens whose export the loaded library lacks are disabled), the content area the screens
// dock into, and a status bar naming the company, fiscal year and user.
#include <QMainWindow>

#include "host/app/screen_catalogue.h"

class QLabel;
class QTreeWidget;
class QTreeWidgetItem;

namespace tr::host {

class HostSession;
class TreasuryLibrary;

class MainWindow : public QMainWindow {
    Q_OBJECT
  public:
    MainWindow(HostSession& session, TreasuryLibrary& library, QWidget* parent = nullptr);
    ~MainWindow() override;

    // Opens the catalogue screen with this title; false when it is absent or not exported.
    bool openScreen(const QString& title);
    QTreeWidget* screenTree() const { return tree_; }
    QWidget* contentArea() const { return content_; }
    // Every docked screen that can tell asks about its unsaved work; false when the user chose to
    // stay in one of them (the window and its screens then stay open).
    bool screensMayClose();

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void open(const ScreenInfo& screen);
    void onItemActivated(QTreeWidgetItem* item);

    HostSession& session_;
    TreasuryLibrary& library_;
    QTreeWidget* tree_;
    QWidget* content_;
};

}  // namespace tr::host
