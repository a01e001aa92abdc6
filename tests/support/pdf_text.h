#pragma once
// The text of a PDF as a test compares it: read by pdftotext, shaped letters folded back
// (NFKC), direction marks dropped, every digit written as a Latin one, and Persian yeh and kaf
// written as the Arabic letters (a font's one glyph serves both, so the PDF may name either).
#include <QString>

namespace tr::test {

// Empty when pdftotext fails.
QString pdfPlainText(const QString& pdfPath);
// `text` folded the same way, to look for it in pdfPlainText's answer.
QString pdfFolded(const QString& text);

}  // namespace tr::test
