// A temporary folder in which tests of the batch scan put up what a disk may hold.

#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStringList>

#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

// Names are bytes, relative to the root. What cannot be made ends the test program.
class FolderTree
{
public:
    FolderTree() : m_root(QFile::encodeName(QDir::tempPath()) + "/folder-tree-XXXXXX")
    {
        if (!::mkdtemp(m_root.data()))
            check(-1, m_root);
        // Somebody else than the owner may have to look in.
        check(::chmod(m_root, 0755), m_root);
    }
    // The toolkit's temporary folder does not find names that are no text.
    ~FolderTree() { std::filesystem::remove_all(m_root.constData()); }
    FolderTree(const FolderTree&) = delete;
    FolderTree& operator=(const FolderTree&) = delete;

    // Absolute and clean.
    QString Path(const QByteArray& name = QByteArray()) const
    {
        return QFile::decodeName(name.isEmpty() ? m_root : Bytes(name));
    }
    QByteArray Bytes(const QByteArray& name) const { return m_root + '/' + name; }

    void Folder(const QByteArray& name) const
    {
        QByteArray path = m_root;
        for (const QByteArray& part : name.split('/'))
        {
            path += '/' + part;
            if (::mkdir(path, 0755) != 0 && errno != EEXIST)
                check(-1, path);
        }
    }
    void File(const QByteArray& name) const
    {
        if (name.contains('/'))
            Folder(name.left(name.lastIndexOf('/')));
        const int file = ::open(Bytes(name), O_CREAT | O_WRONLY, 0644);
        check(file, name);
        ::close(file);
    }
    void Files(const QList<QByteArray>& names) const
    {
        for (const QByteArray& name : names)
            File(name);
    }
    void Link(const QByteArray& target, const QByteArray& name) const
    {
        check(::symlink(target, Bytes(name)), name);
    }
    void Fifo(const QByteArray& name) const { check(::mkfifo(Bytes(name), 0644), name); }
    // A file, a link or an empty folder.
    void Remove(const QByteArray& name) const { check(::remove(Bytes(name)), name); }
    void SetMode(const QByteArray& name, mode_t mode) const { check(::chmod(Bytes(name), mode), name); }

    // What GNU find counts below `path`: files, also behind links, that end in one of the suffixes in any
    // case. Hidden ones, and names that are no text, are left out.
    static int CountOfFind(const QString& path, const QStringList& suffixes)
    {
        QStringList arguments{"-L", path, "-mindepth", "1", "-name", ".*", "-prune", "-o", "-type", "f", "("};
        for (const QString& suffix : suffixes)
            arguments << "-iname"
                      << "*." + suffix << "-o";
        arguments.last() = ")";
        arguments << "-print0";
        QProcess find;
        find.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        find.start("find", arguments);
        if (!find.waitForFinished())
            qFatal("find does not end");
        int count = 0;
        const QList<QByteArray> names = find.readAllStandardOutput().split('\0');
        for (const QByteArray& name : names)
            count += !name.isEmpty() && QString::fromUtf8(name).toUtf8() == name;
        return count;
    }

private:
    static void check(int result, const QByteArray& name)
    {
        if (result < 0)
            qFatal("%s: %s", name.constData(), strerror(errno));
    }

    QByteArray m_root;
};

// Without the rights of an administrator, who may read everything.
class WithoutRights
{
public:
    WithoutRights() : m_was(::geteuid())
    {
        if (m_was == 0 && ::seteuid(65534) != 0)
            qFatal("seteuid: %s", strerror(errno));
    }
    ~WithoutRights()
    {
        if (m_was == 0 && ::seteuid(0) != 0)
            qFatal("seteuid: %s", strerror(errno));
    }

private:
    Q_DISABLE_COPY(WithoutRights)

    const uid_t m_was;
};
