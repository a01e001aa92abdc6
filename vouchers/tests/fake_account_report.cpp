// A stand-in for the suite's AccountReport library, built under its real file name: it writes
// what it was called with onto the parent widget, for the tests to read back.
#include <QVariant>
#include <QWidget>

#include "vouchers/account_report.h"

extern "C" Q_DECL_EXPORT void ReportHesab_Corvask(QWidget* parent, tr::Global* global,
                                                  QObject* /*myDate*/, tr::db::MyDatabase* database,
                                                  QObject* /*tempGridForm*/,
                                                  QObject* /*showStateForm*/, QObject* /*dlgMsg*/,
                                                  const char16_t* filter, int kind) {
    if (!parent) return;
    parent->setProperty("reportFilter", QString::fromUtf16(filter));
    parent->setProperty("reportKind", kind);
    parent->setProperty("reportGlobal", QVariant::fromValue(reinterpret_cast<quintptr>(global)));
    parent->setProperty("reportDatabase",
                        QVariant::fromValue(reinterpret_cast<quintptr>(database)));
}
