#include "tests/support/pdf_text.h"

#include <QProcess>

namespace tr::test {

QString pdfPlainText(const QString& pdfPath) {
    QProcess pdftotext;
    pdftotext.start(QStringLiteral("pdftotext"),
                    {QStringLiteral("-enc"), QStringLiteral("UTF-8"), pdfPath, QStringLiteral("-")});
    if (!pdftotext.waitForFinished(30000) || pdftotext.exitCode() != 0) return {};
    return pdfFolded(QString::fromUtf8(pdftotext.readAllStandardOutput()));
}

QString pdfFolded(const QString& raw) {
    QString text;
    for (QChar c : raw.normalized(QString::NormalizationForm_KC)) {
        if ((c >= QChar(0x202A) && c <= QChar(0x202E)) || c == QChar(0x200E) || c == QChar(0x200F))
            continue;
        if (c == QChar(0x06CC)) c = QChar(0x064A);
        if (c == QChar(0x06A9)) c = QChar(0x0643);
        text += c.isDigit() ? QChar(u'0' + c.digitValue()) : c;
    }
    return text;
}

}  // namespace tr::test
