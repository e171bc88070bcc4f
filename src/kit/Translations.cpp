#include "Translations.h"

#include "Logging.h"

#include <QCoreApplication>
#include <QFile>
#include <QLocale>
#include <QTranslator>

namespace tarnwell {

const QStringList &Translations::supportedLanguages()
{
    static const QStringList codes{QStringLiteral("en"), QStringLiteral("tr"), QStringLiteral("de"),
                                   QStringLiteral("es"), QStringLiteral("fr")};
    return codes;
}

QString Translations::resolve(const QString &languageSetting)
{
    return resolve(languageSetting, QLocale::system().uiLanguages());
}

QString Translations::resolve(const QString &languageSetting, const QStringList &preferredLanguages)
{
    if (supportedLanguages().contains(languageSetting))
        return languageSetting;
    for (const QString &tag : preferredLanguages) {
        QString code = tag.section(QLatin1Char('-'), 0, 0).section(QLatin1Char('_'), 0, 0).toLower();
        if (supportedLanguages().contains(code))
            return code;
    }
    return QStringLiteral("en");
}

Translations::Translations() = default;

Translations::~Translations()
{
    uninstall();
}

void Translations::uninstall()
{
    for (auto &t : m_translators)
        QCoreApplication::removeTranslator(t.get());
    m_translators.clear();
    m_code.clear();
}

QLocale Translations::locale(const QString &code)
{
    // The system's own locale when it speaks the language (keeps its region:
    // en_GB dates stay British), else the language's main locale.
    const QLocale system = QLocale::system();
    if (QLocale::languageToCode(system.language()) == code)
        return system;
    return QLocale(code);
}

bool Translations::install(const QString &code)
{
    uninstall();
    // Dates, weekday names and numbers speak the same language as the texts.
    QLocale::setDefault(locale(code));
    const auto load = [this](const QString &c) {
        auto translator = std::make_unique<QTranslator>();
        // The command line carries the tables uncompressed as well, read in place.
        const QString plain = QStringLiteral(":/i18n/plain/tarnwell_%1.qm").arg(c);
        if (!translator->load(QFile::exists(plain) ? plain : QStringLiteral(":/i18n/tarnwell_%1.qm").arg(c))) {
            qCWarning(lcServices).noquote() << QStringLiteral("Could not load the %1 string table").arg(c);
            return false;
        }
        QCoreApplication::installTranslator(translator.get());
        m_translators.push_back(std::move(translator));
        return true;
    };
    load(QStringLiteral("en"));
    m_code = QStringLiteral("en");
    if (code == QLatin1String("en"))
        return true;
    if (!load(code))
        return false;
    m_code = code;
    return true;
}

} // namespace tarnwell
