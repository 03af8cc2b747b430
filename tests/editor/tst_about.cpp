// SPDX-License-Identifier: MIT
#include "ApplicationInfo.h"
#include "LinkLabel.h"
#include "ScriptedDialogs.h"
#include "WebLink.h"
#include "frmAbout.h"

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
};

QTEST_MAIN(TestAbout)
#include "tst_about.moc"
