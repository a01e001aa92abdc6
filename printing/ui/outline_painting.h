#pragma once
// Paints a laid-out text document on a printer page by page with every glyph drawn as its
// outline. The print preview records pages as pictures and replays their text left to right,
// which moves punctuation and digits in right-to-left lines; outlines replay exactly as laid out.
#include <functional>

class QPainter;
class QPrinter;
class QTextDocument;

namespace tr::printing::ui {

// `document` is laid out on `printer` (its page size the printer's page rectangle).
void paintAsOutlines(QTextDocument& document, QPrinter& printer);
// A print drawn by its own code (a cheque leaf): `paint` draws every page on a painter whose
// text reaches `printer` as outlines, and starts each page after the first with printer.newPage().
void paintWithOutlines(QPrinter& printer, const std::function<void(QPainter&)>& paint);

}  // namespace tr::printing::ui
