#pragma once
// Paints a laid-out text document on a printer page by page with every glyph drawn as its
// outline. The print preview records pages as pictures and replays their text left to right,
// which moves punctuation and digits in right-to-left lines; outlines replay exactly as laid out.
class QPrinter;
class QTextDocument;

namespace tr::printing::ui {

// `document` is laid out on `printer` (its page size the printer's page rectangle).
void paintAsOutlines(QTextDocument& document, QPrinter& printer);

}  // namespace tr::printing::ui
