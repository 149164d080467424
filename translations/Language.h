#pragma once

#include <QStringList>
#include <QTranslator>

// The language in which a program speaks while this lives: its own texts, those of the library and those of
// the toolkit. There is at most one at a time, on the GUI thread, between the application and its first
// widget: texts that are shown already stay as they are.
class Language
{
public:
    // The first of them that there are texts in, which may be English, and English if there is none. Names as
    // in QLocale::uiLanguages(), the one that is liked best first; the country does not count.
    explicit Language(const QStringList& preferred);
    ~Language();
    Language(const Language&) = delete;
    Language& operator=(const Language&) = delete;

    // Two letters, "en" for English.
    QString GetName() const { return m_name; }
    // All that there are texts in, English with them.
    static QStringList GetNames();

private:
    QString m_name;
    QTranslator m_toolkit;
    QTranslator m_library;
    QTranslator m_editor;
};
