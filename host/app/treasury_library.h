#pragma once
// libtreasury as the host loads it: resolved by export name at run time, each screen opened into
// a host container with the session's six objects. Unloading releases the library's forms.
#include <QLibrary>
#include <QString>

#include "host/app/screen_catalogue.h"

class QWidget;

namespace tr::host {

class HostSession;

class TreasuryLibrary {
  public:
    TreasuryLibrary() = default;
    ~TreasuryLibrary();
    TreasuryLibrary(const TreasuryLibrary&) = delete;
    TreasuryLibrary& operator=(const TreasuryLibrary&) = delete;

    // The library built with this host when `path` is empty.
    bool load(const QString& path = {});
    QString errorString() const { return library_.errorString(); }
    QString fileName() const { return library_.fileName(); }
    bool isLoaded() const { return library_.isLoaded(); }

    bool has(const QString& exportName);
    // False when the library lacks the export.
    bool open(const ScreenInfo& screen, QWidget* container, HostSession& session,
              const QString& invoiceNumber = {});
    void release();

  private:
    QLibrary library_;
};

}  // namespace tr::host
