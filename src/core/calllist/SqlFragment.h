#pragma once

#include <QString>
#include <QVariant>
#include <QVariantList>

#include <initializer_list>

// A piece of SQL with the values for its "?" placeholders, in order. Statements are built by
// appending fixed pieces; values only ever travel in args.
struct SqlFragment
{
    QString text;
    QVariantList args;

    SqlFragment() = default;
    explicit SqlFragment(QString piece, QVariantList values = {})
        : text(std::move(piece)), args(std::move(values))
    {
    }

    SqlFragment& add(const QString& piece)
    {
        text += piece;
        return *this;
    }
    SqlFragment& add(const QString& piece, std::initializer_list<QVariant> values)
    {
        text += piece;
        for (const QVariant& v : values)
            args.append(v);
        return *this;
    }
    SqlFragment& add(const SqlFragment& other)
    {
        text += other.text;
        args += other.args;
        return *this;
    }
    bool isEmpty() const { return text.isEmpty(); }
};

// The bound LIKE pattern that finds value anywhere, its % and _ taken literally. Use with
// likeContainsPiece() as the SQL piece.
QString likeEscaped(const QString& value);
// "LIKE ? ESCAPE '\'"
QString likeContainsPiece();
