// SPDX-License-Identifier: MIT
#include "ApplicationInfo.h"
#include "LinkLabel.h"
#include "ScriptedDialogs.h"
#include "WebLink.h"
#include "frmAbout.h"

#include <QDir>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

namespace {

// The desktop as the test wants it: with or without a browser, and a browser
// that opens pages or fails to.
class FakeDesktopLink : public WebLink
{
public:
    using WebLink::WebLink;
    bool browser = true;
    bool opens = true;
    QStringList opened;

    bool HasBrowser() const override { return browser; }

protected:
    bool openInBrowser(QWidget *, const QUrl &url) override
    {
        opened << url.toString();
        return opens;
    }
};

} // namespace

class TestAbout : public QObject
{
    Q_OBJECT

private slots:
    void theCaptionNamesTheProgram()
    {
        ScriptedDialogs dialogs;
        FakeDesktopLink web(dialogs);
        frmAbout about(web);
        QCOMPARE(about.windowTitle(), QStringLiteral(":: Info about ") + ApplicationInfo::title());
    }

    void theVersionLineComesFromTheBuild()
    {
        ScriptedDialogs dialogs;
        FakeDesktopLink web(dialogs);
        frmAbout about(web);
        const QString expected = QStringLiteral("Version %1.%2.%3\r\n")
                                     .arg(KORVI_VERSION_MAJOR)
                                     .arg(KORVI_VERSION_MINOR)
                                     .arg(KORVI_VERSION_PATCH)
            + ApplicationInfo::credit();
        QCOMPARE(about.lblVersion->text(), expected);
        QVERIFY(about.lblVersion->text().startsWith(QStringLiteral("Version 0.")));
    }

    void theLinkOpensTheHomePage()
    {
        ScriptedDialogs dialogs;
        FakeDesktopLink web(dialogs);
        frmAbout about(web);
        QTest::mouseClick(about.lblLink, Qt::LeftButton);
        QCOMPARE(web.opened, QStringList{ ApplicationInfo::homePage() });
        QVERIFY(dialogs.asked().isEmpty());
    }

    void theSecondLinkOpensTheAddressItShows()
    {
        ScriptedDialogs dialogs;
        FakeDesktopLink web(dialogs);
        frmAbout about(web);
        QTest::mouseClick(about.lblLink2, Qt::LeftButton);
        QCOMPARE(web.opened, QStringList{ about.lblLink2->text() });
    }

    void withoutBrowserTheUserIsTold()
    {
        ScriptedDialogs dialogs;
        FakeDesktopLink web(dialogs);
        web.browser = false;
        frmAbout about(web);
        QTest::mouseClick(about.lblLink, Qt::LeftButton);
        QVERIFY(web.opened.isEmpty());
        QCOMPARE(dialogs.asked().size(), 1);
        QCOMPARE(dialogs.asked().at(0).title, QStringLiteral("Browser Not Found"));
        QCOMPARE(dialogs.asked().at(0).text, QStringLiteral("Could not find associated Browser"));
        QCOMPARE(dialogs.asked().at(0).icon, Dialogs::Icon::Warning);
        QVERIFY(!QApplication::overrideCursor());
    }

    void aPageThatDoesNotOpenIsReported()
    {
        ScriptedDialogs dialogs;
        FakeDesktopLink web(dialogs);
        web.opens = false;
        web.OpenURL(nullptr, QStringLiteral("https://example.org/x"));
        QCOMPARE(web.opened, QStringList{ "https://example.org/x" });
        QCOMPARE(dialogs.asked().size(), 1);
        QCOMPARE(dialogs.asked().at(0).title, QStringLiteral("URL Failed"));
        QCOMPARE(dialogs.asked().at(0).text, QStringLiteral("Web Page not Opened"));
        QCOMPARE(dialogs.asked().at(0).icon, Dialogs::Icon::Warning);
        QVERIFY(!QApplication::overrideCursor());
    }

    void theHourglassShowsWhileThePageOpens()
    {
        ScriptedDialogs dialogs;
        struct Watching : FakeDesktopLink
        {
            using FakeDesktopLink::FakeDesktopLink;
            bool hourglass = false;
            bool openInBrowser(QWidget *, const QUrl &url) override
            {
                hourglass = QApplication::overrideCursor()
                    && QApplication::overrideCursor()->shape() == Qt::WaitCursor;
                return FakeDesktopLink::openInBrowser(nullptr, url);
            }
        } web(dialogs);
        web.OpenURL(nullptr, QStringLiteral("https://example.org"));
        QVERIFY(web.hourglass);
        QVERIFY(!QApplication::overrideCursor());
    }

    // The browser check of the platform: on Windows a page written into the
    // program's folder and the shell's answer for it. Nothing stays behind,
    // and a folder that cannot take the page does not change the answer.
    void theBrowserCheckLeavesNoPageBehind()
    {
        QTemporaryDir program;
        ScriptedDialogs dialogs;
        const WebLink web(dialogs, program.path());
        const bool answer = web.HasBrowser();
        QVERIFY(!QFile::exists(program.filePath(WebLink::testPageName())));
        QCOMPARE(QDir(program.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
        const WebLink unwritable(dialogs, program.filePath(QStringLiteral("not-there")));
        QCOMPARE(unwritable.HasBrowser(), answer);
    }

#ifdef Q_OS_WIN
    // The shell answers from the association of .htm pages: with one there is
    // a browser, without any there is none. (Writing the association needs an
    // administrator on Windows, as the installer does; Wine allows it.)
    void theBrowserIsTheProgramAssociatedWithWebPages()
    {
        QSettings userClasses(QStringLiteral("HKEY_CLASSES_ROOT"), QSettings::NativeFormat);
        // The system's own association, if any, is given back afterwards.
        const bool hadPages = userClasses.childGroups().contains(QStringLiteral(".htm"), Qt::CaseInsensitive);
        const QVariant previous = userClasses.value(QStringLiteral(".htm/Default"));
        QTemporaryDir program;
        ScriptedDialogs dialogs;
        const WebLink web(dialogs, program.path());
        userClasses.setValue(QStringLiteral(".htm/Default"), QStringLiteral("KorviTest.Page"));
        userClasses.setValue(QStringLiteral("KorviTest.Page/shell/open/command/Default"),
                             QLatin1Char('"') + QDir::toNativeSeparators(QCoreApplication::applicationFilePath())
                                 + QStringLiteral("\" \"%1\""));
        userClasses.sync();
        const bool withAssociation = web.HasBrowser();
        if (!hadPages)
            userClasses.remove(QStringLiteral(".htm"));
        else if (previous.isValid())
            userClasses.setValue(QStringLiteral(".htm/Default"), previous);
        else
            userClasses.remove(QStringLiteral(".htm/Default"));
        userClasses.remove(QStringLiteral("KorviTest.Page"));
        userClasses.sync();
        QVERIFY(withAssociation);
        if (!hadPages)
            QVERIFY(!web.HasBrowser());
    }
#endif
};

QTEST_MAIN(TestAbout)
#include "tst_about.moc"
