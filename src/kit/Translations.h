#pragma once

#include <QLocale>
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

class QTranslator;

namespace tarnwell {

// Loads the compiled string tables (":/i18n/tarnwell_<code>.qm"). English is
// always installed first so that a key missing from another language falls
// back to its English text instead of showing the raw key.
class Translations
{
public:
    static const QStringList &supportedLanguages(); // en, tr, de, es, fr

    // "system" (or empty) resolves to the first of the user's preferred
    // languages that we ship, else "en"; a supported code is returned as is.
    static QString resolve(const QString &languageSetting);
    static QString resolve(const QString &languageSetting, const QStringList &preferredLanguages);

    // The locale that dates and numbers use for the language `code`.
    static QLocale locale(const QString &code);

    Translations();
    ~Translations();

    // Replaces the installed tables with English plus `code`, and makes the
    // language's locale the default one. Returns false
    // when the table of `code` could not be loaded (English stays installed).
    bool install(const QString &code);
    QString installedLanguage() const { return m_code; }

private:
    void uninstall();
    std::vector<std::unique_ptr<QTranslator>> m_translators;
    QString m_code;
};

} // namespace tarnwell
