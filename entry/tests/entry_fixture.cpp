#include "entry/tests/entry_fixture.h"

#include <QTemporaryDir>

namespace tr::entry::testing {
namespace {

struct Demo {
    QTemporaryDir dir;
    tr::host::DataDirectory data{dir.path()};
    tr::host::User adminUser{1, QStringLiteral("admin"), {}};
    tr::host::User saraUser{2, QStringLiteral("sara"), {}};
    tr::host::HostSession admin{data, adminUser, data.companies().front()};
    tr::host::HostSession sara{data, saraUser, data.companies().front()};
};

Demo& demo() {
    static Demo* instance = new Demo;  // lives as long as the libraries' forms may use it
    return *instance;
}

}  // namespace

EntryLibrary::EntryLibrary(const QString& path) : library_(path) {
    if (!library_.load()) ADD_FAILURE() << library_.errorString().toStdString();
}

EntryLibrary::~EntryLibrary() = default;

int EntryLibrary::open(const char* name, QWidget* parent, tr::host::HostSession& s) {
    auto entry = reinterpret_cast<ScreenEntry>(library_.resolve(name));
    return entry(parent, &s.global(), &s.myDate(), &s.myDatabase(), &s.showStateForm(),
                 &s.tempGridForm(), &s.dlgMsg());
}

int EntryLibrary::openInvoice(const char* name, QWidget* parent, tr::host::HostSession& s,
                              const char16_t* invoiceNumber) {
    auto entry = reinterpret_cast<InvoiceScreenEntry>(library_.resolve(name));
    return entry(parent, &s.global(), &s.myDate(), &s.myDatabase(), &s.showStateForm(),
                 &s.tempGridForm(), &s.dlgMsg(), invoiceNumber);
}

int EntryLibrary::openVoidMode(const char* name, QWidget* parent, tr::host::HostSession& s,
                               int mode) {
    auto entry = reinterpret_cast<VoidModeScreenEntry>(library_.resolve(name));
    return entry(parent, &s.global(), &s.myDate(), &s.myDatabase(), &s.showStateForm(),
                 &s.tempGridForm(), &s.dlgMsg(), mode);
}

void EntryLibrary::release() {
    if (auto entry = reinterpret_cast<ReleaseEntry>(library_.resolve("Release_It"))) entry();
}

void EntryTest::SetUpTestSuite() {
    demo();
}

void EntryTest::TearDown() {
    lib().release();
}

tr::host::HostSession& EntryTest::admin() {
    return demo().admin;
}
tr::host::HostSession& EntryTest::sara() {
    return demo().sara;
}

std::unique_ptr<QWidget> EntryTest::container(const QString& name) {
    auto widget = std::make_unique<QWidget>();
    widget->setObjectName(name);
    widget->resize(800, 600);
    widget->show();
    return widget;
}

EntryLibrary& probeLibrary() {
    static EntryLibrary* library = new EntryLibrary(QStringLiteral(TR_PROBE_LIBRARY));
    return *library;
}

EntryLibrary& treasuryLibrary() {
    static EntryLibrary* library = new EntryLibrary(QStringLiteral(TR_TREASURY_LIBRARY));
    return *library;
}

}  // namespace tr::entry::testing
