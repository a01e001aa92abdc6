#pragma once
// The host's session record: who is logged in, into which company and fiscal year, with which
// rights and settings. Plain values; the host fills it at login and the screens read it.
#include <QString>
#include <QStringList>

namespace tr {

struct Global {
    // The logged-in user's number; keys serial reservations and saved grid layouts.
    int userNumber = 0;
    // The user's login name, written with every saved document and action log row.
    QString userName;
    // This workstation's name, written to the action log.
    QString computerName;
    // One text of action markers, each a form key followed by a marker, e.g.
    // "N_A_CASHGET__SABT(Y)N_A_CASHGET__EDIT(Y)"; a screen enables a command only if its marker
    // is present.
    QString rights;

    // Per-session part of global temporary table names: "##" + this + a time stamp. It keeps
    // two sessions sharing one tempdb apart.
    QString sessionText;
    // Caption of message boxes shown without a caption of their own.
    QString defaultCaption;

    // The open fiscal period, Persian date texts YYYY/MM/DD; document dates must fall inside.
    QString fiscalStart;
    QString fiscalEnd;
    // Company code and fiscal year; the company database is "Corvask_<sCode>_<sYear>" (trimmed).
    QString sCode;
    QString sYear;

    // Lengths of the group prefix of detail, second detail and project codes: an account's
    // allowed groups are matched on this many leading characters.
    int tafsilyGroupLength = 2;
    int tafsily2GroupLength = 2;
    int projectGroupLength = 2;
    // The suite's names of the second detail and project levels, used in account messages.
    QString tafsily2LevelName;
    QString projectLevelName;

    // The suite's installation folder; sibling libraries live under "\DLLs\GlobalForms\".
    QString hostFolder;
};

// Every marker a user can be granted on a screen, in the order rights are checked.
QStringList rightMarkers();
// A rights text granting every marker on each of the given form keys.
QString fullRights(const QStringList& formKeys);

}  // namespace tr
