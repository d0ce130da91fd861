// What a program sees that includes the public headers and nothing else: every file below compiles with one of them as
// its first include, and the sets of keys work whatever came before.
#include <memorykeymodel/displayed_memory_key.h>
#include <memorykeymodel/memory_key.h>

#include <QSet>
#include <QtTest>

int keysInSetsIncludedFirst();
int keysInSetsIncludedLast();

class TestInterface : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void setsOfKeysWorkWithTheSetHeaderFirst() { QCOMPARE(keysInSetsIncludedFirst(), 2); }
    void setsOfKeysWorkWithTheSetHeaderLast() { QCOMPARE(keysInSetsIncludedLast(), 2); }
    void aHashCanBeAskedForByItsQualifiedName();
};

void TestInterface::aHashCanBeAskedForByItsQualifiedName()
{
    const Velk::MemoryKey key(QStringLiteral("Arm"), QString(), Velk::DataNature);

    QCOMPARE(::qHash(key), uint(::qHash(QStringLiteral("Arm"))));
    QCOMPARE(::qHash(Velk::DisplayedMemoryKey(key)), ::qHash(key));
}

QTEST_APPLESS_MAIN(TestInterface)
#include "tst_interface.moc"
