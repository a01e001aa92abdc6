#pragma once
// The books a database test runs on: the embedded engine in a temporary directory, or, when the
// run asks for the server (TR_TEST_BACKEND=postgres), a database of its own on the run's private
// PostgreSQL server. Every database test runs once on each.
#include <QString>
#include <memory>

#include "db/tsql/books.h"

namespace tr::test {

bool testingOnServer();
// `directory` holds the embedded engine's files; `name` names the server's database in failures.
// Fails the calling test (by an exception carrying the reason) when the server cannot be had.
std::unique_ptr<tr::tsql::Books> makeTestBooks(const QString& directory, const QString& name = QStringLiteral("book"));
// What a child process is given to reach the same books (see openTestBooks).
QString booksAddress(tr::tsql::Books& books);
// The books an address names: a data directory, or "server:" and a connection text.
std::unique_ptr<tr::tsql::Books> openTestBooks(const QString& address);

}  // namespace tr::test
