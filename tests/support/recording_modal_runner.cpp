#include "tests/support/recording_modal_runner.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>

#include "host/sdk/dlg_msg.h"
#include "host/sdk/temp_grid_form.h"

namespace tr::test {

using tr::dialog::Button;

RecordingModalRunner::RecordingModalRunner() : previous_(tr::sdk::ModalRunner::install(this)) {}

RecordingModalRunner::~RecordingModalRunner() {
    tr::sdk::ModalRunner::install(previous_);
}

void RecordingModalRunner::answer(int result, Action action) {
    answers_.push_back(Answer{result, std::move(action)});
}

void RecordingModalRunner::answerBy(Action action) {
    answers_.push_back(Answer{kFromDialog, std::move(action)});
}

void RecordingModalRunner::chooseRow(int row) {
    answer(QDialog::Accepted, [row](QDialog& dialog) {
        if (auto* grid = qobject_cast<tr::sdk::TTempGridForm*>(&dialog)) grid->setCurrentRow(row);
    });
}

int RecordingModalRunner::exec(QDialog& dialog) {
    Shown shown;
    shown.kind = dialog.objectName();
    shown.title = dialog.windowTitle();
    if (auto* msg = qobject_cast<tr::sdk::TDlgMsg*>(&dialog)) {
        shown.title = msg->captionPanel()->text();
        shown.text = msg->memo()->toPlainText();
        for (Button b : {Button::Yes, Button::OK2, Button::OK1, Button::No, Button::Cancel})
            if (!msg->button(b)->isHidden()) shown.buttons << msg->button(b)->text();
    } else if (auto* grid = qobject_cast<tr::sdk::TTempGridForm*>(&dialog)) {
        QStringList lines;
        for (int r = 0; r < grid->grid()->rowCount(); ++r) {
            QStringList cells;
            for (int c = 0; c < grid->grid()->columnCount(); ++c) {
                const QTableWidgetItem* item = grid->grid()->item(r, c);
                cells << (item ? item->text() : QString());
            }
            lines << cells.join(QLatin1Char('\t'));
        }
        shown.text = lines.join(QLatin1Char('\n'));
    }

    int result = QDialog::Rejected;
    if (auto* msg = qobject_cast<tr::sdk::TDlgMsg*>(&dialog)) result = msg->closeResult();
    if (!answers_.empty()) {
        Answer next = std::move(answers_.front());
        answers_.pop_front();
        dialog.setResult(0);
        if (next.action) next.action(dialog);
        result = next.result == kFromDialog ? dialog.result() : next.result;
    }
    dialog.setResult(result);
    shown.answer = result;
    shown_.append(shown);
    return result;
}

}  // namespace tr::test
