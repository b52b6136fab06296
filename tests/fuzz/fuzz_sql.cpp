#include "platform/sql/SqlDialect.h"
#include "platform/sql/SqlShape.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace
{
/// The kinds and spellings of a statement, parted so that no two statements share it.
QString Skeleton(const SqlTokens &tokens, bool withValues)
{
    QString result;
    for (qsizetype i = 0; i < tokens.Count(); ++i) {
        const bool isValue = tokens.At(i).kind == SqlKind::Text;
        result += QChar(u'0' + static_cast<int>(tokens.At(i).kind));
        if (withValues || !isValue)
            result += tokens.Spelling(i);
        result += u'\n';
    }
    return result;
}

void Require(bool holds)
{
    if (!holds)
        std::abort();
}

/// Whatever the text, reading it ends, and what is written for an engine reads as one whole statement.
void ReadAndWrite(const QString &sql)
{
    SqlTokens tokens;
    if (tokens.Read(sql) != SqlFault::None)
        return;
    SqlShape shape;
    for (const bool lifted : {false, true}) {
        if (lifted && !shape.Take(tokens))
            return;
        for (const SqlDialect dialect : {SqlDialect::File, SqlDialect::PostgreSql}) {
            const QString written = SqlFor(dialect, tokens);
            SqlTokens again;
            Require(again.Read(written) == SqlFault::None);
        }
    }
}

/// A value between apostrophes, its own doubled, never changes what is around it.
void TypeIntoStatement(const QString &typed)
{
    const QString safe = QString(typed).replace(QStringLiteral("'"), QStringLiteral("''"));
    const QString before = QStringLiteral("UPDATE Users SET Password = '");
    const QString after =
        QStringLiteral("' WHERE UserName LIKE '") + safe + QStringLiteral("' AND UserID = 5");
    const QString withTyped = before + safe + after;
    const QString withPlain =
        before + QStringLiteral("x") + QStringLiteral("' WHERE UserName LIKE 'x' AND UserID = 5");
    SqlTokens tokens;
    SqlTokens plain;
    Require(tokens.Read(withTyped) == SqlFault::None);
    Require(plain.Read(withPlain) == SqlFault::None);
    Require(Skeleton(tokens, false) == Skeleton(plain, false));

    const QString written = SqlFor(SqlDialect::PostgreSql, tokens);
    const QString writtenPlain = SqlFor(SqlDialect::PostgreSql, plain);
    SqlTokens engine;
    SqlTokens enginePlain;
    Require(engine.Read(written) == SqlFault::None);
    Require(enginePlain.Read(writtenPlain) == SqlFault::None);
    Require(Skeleton(engine, false) == Skeleton(enginePlain, false));

    SqlShape shape;
    SqlShape plainShape;
    Require(shape.Take(tokens) && plainShape.Take(plain));
    Require(shape.Values().size() == plainShape.Values().size());
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const auto length = static_cast<qsizetype>(size);
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), length);
    ReadAndWrite(text);
    TypeIntoStatement(text);
    return 0;
}
