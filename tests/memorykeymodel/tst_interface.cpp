// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

// The public headers as a program sees them that includes nothing else: each file in headers/ compiles with one of them
// as its first include, and sets of keys work before and after any other header.
#include <memorykeymodel/displayed_memory_key.h>
#include <memorykeymodel/memory_key.h>

#include <QSet>
#include <QTest>

int keysInSetsIncludedFirst();
int keysInSetsIncludedLast();

class TestInterface : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void setsOfKeysWorkWithTheSetHeaderFirst() { QCOMPARE(keysInSetsIncludedFirst(), 2); }
    void setsOfKeysWorkWithTheSetHeaderLast() { QCOMPARE(keysInSetsIncludedLast(), 2); }
    void theHashIsCallableByItsQualifiedName();
};

void TestInterface::theHashIsCallableByItsQualifiedName()
{
    const Velk::MemoryKey key(QStringLiteral("Arm"), QString(), Velk::DataNature);

    QCOMPARE(::qHash(key), uint(::qHash(QStringLiteral("Arm"))));
    QCOMPARE(::qHash(Velk::DisplayedMemoryKey(key)), ::qHash(key));
}

QTEST_APPLESS_MAIN(TestInterface)
#include "tst_interface.moc"
