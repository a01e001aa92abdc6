#pragma once
// The demo host's command line, read before any window exists: --help and a refused option or
// data folder need no display. A data folder that does not exist, or a server without books, is
// given the demo company only on --create-demo.
#include <QString>
#include <QStringList>

namespace tr::host {

struct HostOptions {
    QString data = QStringLiteral("demo-data");
    QString server;  // a PostgreSQL connection text: the books are there, not in `data`
    QString library;
    QString screen;
    QString screenshot;
    bool autoLogin = false;
    bool createDemo = false;
};

struct HostCommandLine {
    HostOptions options;
    // Set when the program ends here: the text goes to standard output (help, code 0) or to
    // standard error (a refusal, code 1).
    bool exit = false;
    int exitCode = 0;
    QString output;
};

// `arguments` includes the program name first, as main() receives them.
HostCommandLine readHostCommandLine(const QStringList& arguments);

}  // namespace tr::host
