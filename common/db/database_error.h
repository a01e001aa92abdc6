#pragma once
// The exception every database failure raises: the engine's message, the SQL text it ran and,
// where the engine knows it, the 1-based character position of the offending construct.
#include <QString>
#include <stdexcept>

namespace tr::db {

class __attribute__((visibility("default"))) DatabaseError : public std::runtime_error {
public:
    explicit DatabaseError(const QString& message, const QString& sql = {}, int position = 0);
    const QString& message() const { return message_; }
    const QString& sql() const { return sql_; }
    int position() const { return position_; }

private:
    QString message_;
    QString sql_;
    int position_;
};

}  // namespace tr::db
