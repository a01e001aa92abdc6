#include "host/app/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHeaderView>
#include <QLabel>
#include <QMenuBar>
#include <QSplitter>
#include <QStatusBar>
#include <QTreeWidget>

#include "host/app/host_session.h"
#include "host/app/treasury_library.h"

namespace tr::host {
namespace {

constexpr int kScreenRole = Qt::UserRole + 1;

}  // namespace

MainWindow::MainWindow(HostSession& session, TreasuryLibrary& library, QWidget* parent)
    : QMainWindow(parent),
      session_(session),
      library_(library),
      tree_(new QTreeWidget),
      content_(new QWidget) {
    setObjectName(QStringLiteral("MainWindow"));
    setLayoutDirection(Qt::RightToLeft);
    setWindowTitle(QStringLiteral("خزانه داري - %1").arg(session.company().name));

    tree_->setObjectName(QStringLiteral("screenTree"));
    tree_->setHeaderLabel(QStringLiteral("صفحه هاي خزانه داري"));
    tree_->header()->setDefaultAlignment(Qt::AlignCenter);  // clear of the window's edge
    tree_->setMinimumWidth(220);
    // Not "pnlContent": a receipt docked into a container of that name settles an invoice.
    content_->setObjectName(QStringLiteral("pnlScreens"));
    content_->setAutoFillBackground(true);

    const auto& screens = screenCatalogue();
    for (const QString& group : screenGroups()) {
        auto* groupItem = new QTreeWidgetItem(tree_, {group});
        QMenu* menu = menuBar()->addMenu(group);
        for (int i = 0; i < screens.size(); ++i) {
            const ScreenInfo& screen = screens[i];
            if (screen.group != group) continue;
            const bool present = library_.has(screen.exportName);
            auto* item = new QTreeWidgetItem(groupItem, {screen.title});
            item->setData(0, kScreenRole, i);
            item->setDisabled(!present);
            QAction* action =
                menu->addAction(screen.title, this, [this, i] { open(screenCatalogue()[i]); });
            action->setEnabled(present);
        }
        groupItem->setExpanded(true);
    }
    QMenu* windowMenu = menuBar()->addMenu(QStringLiteral("پنجره"));
    windowMenu->addAction(QStringLiteral("بستن همه صفحه ها"), this, [this] {
        if (screensMayClose()) library_.release();
    });
    windowMenu->addAction(QStringLiteral("خروج"), this, &QWidget::close);
    connect(tree_, &QTreeWidget::itemActivated, this, &MainWindow::onItemActivated);
    connect(tree_, &QTreeWidget::itemClicked, this, &MainWindow::onItemActivated);

    auto* splitter = new QSplitter(Qt::Horizontal);
    splitter->addWidget(tree_);
    splitter->addWidget(content_);
    splitter->setStretchFactor(1, 1);
    splitter->setCollapsible(1, false);
    setCentralWidget(splitter);

    const auto& g = session.global();
    for (const QString& text :
         {QStringLiteral("شرکت: %1").arg(session.company().name),
          QStringLiteral("سال مالي: %1").arg(g.sYear), QStringLiteral("كاربر: %1").arg(session.userDisplayName())})
        statusBar()->addPermanentWidget(new QLabel(text));
    if (!library_.isLoaded())
        statusBar()->showMessage(QStringLiteral("كتابخانه خزانه داري بارگذاري نشد"));
    resize(1100, 720);
}

MainWindow::~MainWindow() {
    // The library's forms are children of the content area; they go before it does.
    library_.release();
}

bool MainWindow::screensMayClose() {
    // The screens belong to the library: asked by name, they need no header of it.
    for (QWidget* screen : content_->findChildren<QWidget*>()) {
        if (screen->metaObject()->indexOfMethod("confirmLeave()") < 0) continue;
        bool leave = true;
        if (!QMetaObject::invokeMethod(screen, "confirmLeave", Qt::DirectConnection,
                                       Q_RETURN_ARG(bool, leave)) ||
            leave)
            continue;
        // The user stays with that screen: it comes to the front.
        screen->show();
        screen->raise();
        return false;
    }
    return true;
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (screensMayClose())
        event->accept();
    else
        event->ignore();
}

bool MainWindow::openScreen(const QString& title) {
    const ScreenInfo* screen = findScreen(title);
    if (!screen || !library_.has(screen->exportName)) return false;
    open(*screen);
    return true;
}

void MainWindow::open(const ScreenInfo& screen) {
    library_.open(screen, content_, session_);
}

void MainWindow::onItemActivated(QTreeWidgetItem* item) {
    const QVariant index = item->data(0, kScreenRole);
    if (!index.isValid() || item->isDisabled()) return;
    open(screenCatalogue()[index.toInt()]);
}

}  // namespace tr::host
