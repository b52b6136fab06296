#pragma once

#include "support/Files.h"

#include <QTemporaryDir>

/// A registry of data sources of the test's own: unixODBC's user sources in a file that goes with the test.
class OwnDataSources final
{
public:
    OwnDataSources()
    {
        qputenv("ODBCINI", QFile::encodeName(File()));
        SetContent({});
    }
    ~OwnDataSources() { qunsetenv("ODBCINI"); }
    OwnDataSources(const OwnDataSources &) = delete;
    OwnDataSources &operator=(const OwnDataSources &) = delete;

    QString File() const { return m_dir.filePath(u"odbc.ini"_qs); }
    void SetContent(const QByteArray &content) const { WriteFile(File(), content); }
    QByteArray Content() const { return ContentOf(File()); }

private:
    QTemporaryDir m_dir;
};
