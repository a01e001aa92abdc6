#pragma once
// "انتخاب چک" on the received-cheque document: the cheques prepared in BCK_ChqNaghd that no receipt
// has taken in yet, offered in the pick list; the chosen one becomes a new cheque row, ChqtCod 1
// marking it payable to order and 2 a guarantee cheque ("ض").
#include <QString>
#include <QVariantMap>

#include "common/dialog/host_windows.h"
#include "common/session/services.h"

namespace tr::cheques {

class ChequeDocument;

inline const QString kPreparedChequesTitle = QStringLiteral("انتخاب چک");

// The prepared cheques not yet received, in the order they were prepared, and the list's columns.
QString preparedChequesSql();
QList<tr::dialog::PickColumn> preparedChequeColumns();
// Fills a new cheque row of `document` from a chosen row of preparedChequesSql().
void takePreparedCheque(ChequeDocument& document, const QVariantMap& chosen);
// Shows the list and takes the chosen cheque; false when the user chose none.
bool pickPreparedCheque(const tr::Services& services, ChequeDocument& document);

}  // namespace tr::cheques
