// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <memorykeymodel/memory_key.h>

#include <QSet>
#include <QTest>

#include <type_traits>

using namespace Velk;

static_assert(!std::is_default_constructible<MemoryKey>::value, "a key is nothing without its name");
static_assert(std::is_copy_constructible<MemoryKey>::value && std::is_copy_assignable<MemoryKey>::value,
              "keys travel by value");
static_assert(std::has_virtual_destructor<MemoryKey>::value, "a key can be derived from");
static_assert(std::is_same<std::underlying_type<MemoryKeyNature>::type, int>::value, "any mask is a valid value");
static_assert(std::is_same<decltype(qHash(std::declval<const MemoryKey&>())), uint>::value, "");

class TestMemoryKey : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsTheValuesOfItsConstructor();
    void aCopyHasTheSameNameDescriptionAndNature();
    void assignmentReplacesAllThree();
    void natureHasADisplayText_data();
    void natureHasADisplayText();
    void theDisplayTextIsShared();
    void equalityIsOfNames_data();
    void equalityIsOfNames();
    void aSetKeepsTheKeyThatItHas();
};

void TestMemoryKey::keepsTheValuesOfItsConstructor()
{
    const MemoryKey key(QStringLiteral(" Arm "), QString(), EventNature);

    QCOMPARE(key.name(), QStringLiteral(" Arm "));
    QVERIFY(key.description().isNull());
    QCOMPARE(key.nature(), EventNature);
}

void TestMemoryKey::aCopyHasTheSameNameDescriptionAndNature()
{
    const MemoryKey key(QStringLiteral("Arm"), QStringLiteral("the arm"), EventNature);

    const MemoryKey copy(key);

    QCOMPARE(copy.name(), QStringLiteral("Arm"));
    QCOMPARE(copy.description(), QStringLiteral("the arm"));
    QCOMPARE(copy.nature(), EventNature);
}

void TestMemoryKey::assignmentReplacesAllThree()
{
    MemoryKey key(QStringLiteral("Arm"), QStringLiteral("the arm"), EventNature);

    key = MemoryKey(QStringLiteral("Leg"), QStringLiteral("the leg"), DataNature);

    QCOMPARE(key.name(), QStringLiteral("Leg"));
    QCOMPARE(key.description(), QStringLiteral("the leg"));
    QCOMPARE(key.nature(), DataNature);
}

void TestMemoryKey::natureHasADisplayText_data()
{
    QTest::addColumn<int>("nature");
    QTest::addColumn<QString>("text");
    QTest::newRow("data") << 1 << QStringLiteral("DATA");
    QTest::newRow("event") << 2 << QStringLiteral("EVENT");
    QTest::newRow("unknown") << 4 << QStringLiteral("UNKNOWN");
    QTest::newRow("none") << 0 << QString();
    QTest::newRow("a mask is no nature") << 3 << QString();
    QTest::newRow("all bits are no nature") << 7 << QString();
    QTest::newRow("a negative number is no nature") << -1 << QString();
    QTest::newRow("a large number is no nature") << 1000000000 << QString();
    QTest::newRow("no bit of ours") << 8 << QString();
}

void TestMemoryKey::natureHasADisplayText()
{
    QFETCH(int, nature);
    QFETCH(QString, text);

    const MemoryKey key(QStringLiteral("Arm"), QString(), MemoryKeyNature(nature));
    QCOMPARE(int(key.nature()), nature);
    const QString shown = key.natureToString();

    QCOMPARE(shown, text);
    QCOMPARE(shown.isNull(), text.isNull());
}

void TestMemoryKey::theDisplayTextIsShared()
{
    QCOMPARE(MemoryKey::dataString, QStringLiteral("DATA"));
    QCOMPARE(MemoryKey::eventString, QStringLiteral("EVENT"));
    QCOMPARE(MemoryKey::unknownString, QStringLiteral("UNKNOWN"));
    QCOMPARE(MemoryKey(QString(), QString(), DataNature).natureToString().constData(),
             MemoryKey::dataString.constData());
}

void TestMemoryKey::equalityIsOfNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("description");
    QTest::addColumn<int>("nature");
    QTest::addColumn<bool>("equal");
    QTest::newRow("equal in everything") << "A"
                                         << "a" << int(DataNature) << true;
    QTest::newRow("other nature") << "A"
                                  << "a" << int(EventNature) << true;
    QTest::newRow("other description") << "A"
                                       << "b" << int(DataNature) << true;
    QTest::newRow("other case") << "a"
                                << "a" << int(DataNature) << false;
    QTest::newRow("other name") << "B"
                                << "a" << int(DataNature) << false;
    QTest::newRow("not trimmed") << "A "
                                 << "a" << int(DataNature) << false;
    QTest::newRow("code units, not what looks alike") << QStringLiteral("\u0391") << "a" << int(DataNature) << false;
}

void TestMemoryKey::equalityIsOfNames()
{
    QFETCH(QString, name);
    QFETCH(QString, description);
    QFETCH(int, nature);
    QFETCH(bool, equal);
    const MemoryKey key(QStringLiteral("A"), QStringLiteral("a"), DataNature);

    const MemoryKey other(name, description, MemoryKeyNature(nature));

    QCOMPARE(key == other, equal);
    QCOMPARE(qHash(key) == qHash(other), equal);
    QCOMPARE(qHash(other), static_cast<uint>(qHash(name)));
}

void TestMemoryKey::aSetKeepsTheKeyThatItHas()
{
    QSet<MemoryKey> keys;

    keys.insert(MemoryKey(QStringLiteral("A"), QStringLiteral("first"), DataNature));
    keys.insert(MemoryKey(QStringLiteral("A"), QStringLiteral("second"), EventNature));

    QCOMPARE(keys.size(), 1);
    QCOMPARE(keys.cbegin()->nature(), DataNature);
    QCOMPARE(keys.cbegin()->description(), QStringLiteral("first"));
}

QTEST_APPLESS_MAIN(TestMemoryKey)
#include "tst_memory_key.moc"
