#pragma once
// What the entry tests share: one demo data directory per process with two logged-in sessions
// (admin and sara), and a shared library of entry points opened with QLibrary and called the way
// a host calls it.
#include <gtest/gtest.h>

#include <QLibrary>
#include <QWidget>
#include <memory>

#include "entry/entry_api.h"
#include "host/app/host_session.h"

namespace tr::entry::testing {

class EntryLibrary {
  public:
    explicit EntryLibrary(const QString& path);
    ~EntryLibrary();

    QLibrary& library() { return library_; }
    bool has(const char* name) { return library_.resolve(name) != nullptr; }
    // A published pointer (`_Global`, `_FixDesForm`...), read as the widget or object it points to.
    template <class T = QWidget>
    T* published(const char* name) {
        auto* slot = reinterpret_cast<T**>(library_.resolve(name));
        return slot ? *slot : nullptr;
    }

    int open(const char* name, QWidget* parent, tr::host::HostSession& session);
    int openInvoice(const char* name, QWidget* parent, tr::host::HostSession& session,
                    const char16_t* invoiceNumber);
    int openVoidMode(const char* name, QWidget* parent, tr::host::HostSession& session, int mode);
    void release();

  private:
    QLibrary library_;
};

// Loaded once per process and kept loaded; Release_It runs after every test.
class EntryTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite();
    void TearDown() override;

    static tr::host::HostSession& admin();
    static tr::host::HostSession& sara();
    virtual EntryLibrary& lib() = 0;

    // A shown host container of a typical content-area size.
    std::unique_ptr<QWidget> container(const QString& name = QStringLiteral("pnlScreens"));
};

EntryLibrary& probeLibrary();
EntryLibrary& treasuryLibrary();

}  // namespace tr::entry::testing
