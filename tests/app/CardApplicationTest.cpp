#include "app/CardApplication.h"

#include "app/MainWindow.h"
#include "platform/BackgroundQueue.h"
#include "platform/settings/UserDefaults.h"
#include "support/CardBuilder.h"
#include "support/TestHome.h"

#include <QApplication>
#include <QDir>
#include <QMenu>
#include <QMessageBox>
#include <QTest>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

namespace {

template<typename Widget>
QList<Widget*> shown()
{
    QList<Widget*> result;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* found = qobject_cast<Widget*>(widget); found && found->isVisible())
            result.push_back(found);
    }
    return result;
}

/// The cards in view; empty texts are windows without one.
QStringList cardsInView()
{
    QStringList result;
    for (const MainWindow* window : shown<MainWindow>())
        result.push_back(window->cardPath());
    result.sort();
    return result;
}

} // namespace

class CardApplicationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void opensOneWindowACard();
    void refusesWhatIsNoCard_data();
    void refusesWhatIsNoCard();
    void remembersCards();
    void endsInTheMiddleOfAParse();

private:
    std::unique_ptr<CardBuilder> m_card;
    std::unique_ptr<CardBuilder> m_other;
};

void CardApplicationTest::init()
{
    m_card = std::make_unique<CardBuilder>();
    m_card->file(u"NORMAL/200101120000.MP4"_s);
    m_other = std::make_unique<CardBuilder>(u"this & that"_s);
    m_other->file(u"NORMAL/200101120000.MP4"_s);
}

void CardApplicationTest::opensOneWindowACard()
{
    {
        CardApplication application(*qApp);
        application.openAtStart({});
        QCOMPARE(cardsInView(), QStringList{u""_s});
    }
    CardApplication application(*qApp);
    const QString sameAgain = m_card->path(u"NORMAL/../"_s);
    const QString relative = QDir::current().relativeFilePath(m_other->root());
    application.openAtStart({m_card->root(), relative, sameAgain});
    QStringList expected = {m_card->root(), m_other->root()};
    expected.sort();
    QCOMPARE(cardsInView(), expected);
    QVERIFY(shown<QMessageBox>().isEmpty());
}

void CardApplicationTest::refusesWhatIsNoCard_data()
{
    QTest::addColumn<QString>("delta");
    QTest::newRow("missing") << u"missing"_s;
    QTest::newRow("a file") << u"NORMAL/200101120000.MP4"_s;
    QTest::newRow("a folder of the card") << u"NORMAL"_s;
}

void CardApplicationTest::refusesWhatIsNoCard()
{
    QFETCH(QString, delta);
    CardApplication application(*qApp);
    application.openAtStart({m_card->path(delta)});
    QCOMPARE(cardsInView(), QStringList{u""_s});
    const QList<QMessageBox*> boxes = shown<QMessageBox>();
    QCOMPARE(boxes.size(), 1);
    QVERIFY(boxes.front()->text().contains(delta.section(u'/', -1)));
    static QStringList reasons;
    QVERIFY(!reasons.contains(boxes.front()->informativeText()));
    reasons.push_back(boxes.front()->informativeText());
}

void CardApplicationTest::remembersCards()
{
    UserDefaults::shared().setValue(u"RecentCards"_s, QStringList());
    {
        CardApplication application(*qApp);
        application.openAtStart({m_card->root(), m_other->root(), m_card->path(u"missing"_s)});
    }
    CardApplication application(*qApp);
    application.openAtStart({m_card->root()});
    MainWindow* window = shown<MainWindow>().value(0);
    QVERIFY(window);
    QMenu* menu = window->recentMenu();
    Q_EMIT menu->aboutToShow();
    const QList<QAction*> actions = menu->actions();
    QVERIFY(actions.size() > 2);
    QCOMPARE(actions[0]->text(), m_card->root());
    QCOMPARE(actions[1]->text(), QString(m_other->root()).replace(u'&', u"&&"_s));
    QVERIFY(actions[2]->isSeparator());
    actions[1]->trigger();
    QVERIFY(cardsInView().contains(m_other->root()));
    actions.back()->trigger();
    Q_EMIT menu->aboutToShow();
    QVERIFY(menu->isEmpty() && !menu->isEnabled());
}

void CardApplicationTest::endsInTheMiddleOfAParse()
{
    for (int i = 0; i < 60; ++i)
        m_card->file(u"NORMAL/2001011200%1.MP4"_s.arg(i, 2, 10, QLatin1Char('0')));
    {
        CardApplication application(*qApp);
        application.openAtStart({m_card->root()});
        QCOMPARE(cardsInView(), QStringList{m_card->root()});
        // No event is handled any more: what waits for that is released, or the end would never come.
    }
    QVERIFY(shown<MainWindow>().isEmpty());
    QVERIFY(BackgroundQueue::waitForDone(0));
}

int main(int argc, char* argv[])
{
    const TestHome home;
    QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(u"Cardreel"_s);
    QCoreApplication::setApplicationName(u"CardApplicationTest"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    setupDefaults();
    CardApplicationTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "CardApplicationTest.moc"
