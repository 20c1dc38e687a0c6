#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace Tavrin::Testing {

/// A folder of the test's own, removed at its end.
class TemporaryFolder {
public:
    QString path(const QString& name = {}) const
    {
        return name.isEmpty() ? m_folder.path() : m_folder.filePath(name);
    }

    void write(const QString& name, const QByteArray& contents) const
    {
        QDir(m_folder.path()).mkpath(QFileInfo(name).path());
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size())
            qFatal("cannot write %s", qPrintable(path(name)));
    }

    QByteArray read(const QString& name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QStringList names(const QString& folder = QStringLiteral(".")) const
    {
        return QDir(path(folder))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

private:
    QTemporaryDir m_folder;
};

/// A folder that is there before what is kept in it: a base class that comes first.
struct HasFolder {
    TemporaryFolder folder;
};

} // namespace Tavrin::Testing
