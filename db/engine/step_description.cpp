#include "db/engine/step_description.h"

#include <QStringList>

namespace tr::engine {

QString describeSteps(const std::vector<ast::StatementPtr>& statements,
                      const std::function<Step(const ast::Statement&)>& translate, const QString& begin) {
    QStringList out;
    std::function<void(const ast::Statement&, int)> describe = [&](const ast::Statement& s, int indent) {
        const QString pad(indent * 2, QLatin1Char(' '));
        const Step step = translate(s);
        switch (step.kind) {
            case Step::Kind::Sql:
                for (const QString& text : step.sql) out << pad + text + QLatin1Char(';');
                break;
            case Step::Kind::Call: {
                QStringList args;
                for (const QVariant& a : step.args) args << (a.isNull() ? QStringLiteral("NULL") : a.toString());
                out << pad + QStringLiteral("-- procedure %1(%2)").arg(step.procedure, args.join(QStringLiteral(", ")));
                break;
            }
            case Step::Kind::If:
                out << pad + QStringLiteral("-- if (") + step.query + QStringLiteral(") = 1:");
                for (const ast::Statement* b : step.thenBody) describe(*b, indent + 1);
                if (!step.elseBody.empty()) out << pad + QStringLiteral("-- else:");
                for (const ast::Statement* b : step.elseBody) describe(*b, indent + 1);
                break;
            case Step::Kind::Block:
                for (const ast::Statement* b : step.thenBody) describe(*b, indent);
                break;
            case Step::Kind::ExecText:
                out << pad + QStringLiteral("-- run the text of (") +
                           step.writtenText.value_or(step.query) + QLatin1Char(')');
                break;
            case Step::Kind::Begin:
                out << pad + begin + QLatin1Char(';');
                break;
            case Step::Kind::Commit:
                out << pad + QStringLiteral("COMMIT;");
                break;
            case Step::Kind::Rollback:
                out << pad + QStringLiteral("ROLLBACK;");
                break;
        }
    };
    for (const ast::StatementPtr& s : statements) describe(*s, 0);
    return out.join(QLatin1Char('\n'));
}

}  // namespace tr::engine
