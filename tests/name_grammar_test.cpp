#include "generation/grammar_check.h"
#include "generation/name_grammar.h"
#include "platform/core/random_source.h"
#include "support.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QHash>
#include <QSet>

using namespace Qt::StringLiterals;
using platform::ErrorNumber;
using Procs::generarNombre;

namespace {

class NameGrammarTest : public testing::Test
{
protected:
    NameGrammarTest() { platform::randomSource().seed(1); }

    QString name(const QByteArray& grammar)
    {
        app.write(u"g.txt"_s, grammar);
        return generarNombre(1, u"g.txt"_s);
    }

    /// How often each name comes up in many draws.
    QHash<QString, int> draws(const QByteArray& grammar, int count)
    {
        app.write(u"g.txt"_s, grammar);
        QHash<QString, int> found;
        for (int i = 0; i < count; ++i)
            ++found[generarNombre(1, u"g.txt"_s)];
        return found;
    }

    void expectFault(const QByteArray& grammar, const QStringList& fragments)
    {
        SCOPED_TRACE(grammar.toStdString());
        app.write(u"g.txt"_s, grammar);
        expectError([] { generarNombre(1, u"g.txt"_s); }, ErrorNumber::BadFormat,
                    QStringList{u"g.txt"_s} + fragments);
    }

    /// What a check of g.txt, with this text, tells of.
    QString faults(const QByteArray& grammar)
    {
        app.write(u"g.txt"_s, grammar);
        QStringList found;
        Procs::checkGrammars({app.path(u"g.txt"_s)}, [&](const platform::Error& fault) {
            found.append(fault.description);
        });
        return found.join(u'\n');
    }

    TempAppFolder app;
};

} // namespace

TEST_F(NameGrammarTest, ACheckFindsWhatCouldStopAnExpansion)
{
    app.write(u"otro.txt"_s, "[a]\r\n{g.txt}\r\n");
    EXPECT_EQ(faults("[a]\r\n<b>-<B>\r\n<a><b>\r\n[b]\r\nx > y }\r\n"), QString());
    EXPECT_EQ(faults("[a]\r\nx\r\n{otro.txt}\r\n"), QString()) << "it may end";
    EXPECT_EQ(faults("[a]\r\nx\r\n<a><a>\r\n"), QString());
    const QString all = faults("[a]\r\n<c>\r\nmal|x\r\n[b]\r\n0|x\r\n[d]\r\n{nada.txt}\r\n"
                               "[e]\r\n<b\r\n[f]\r\nx>y<b>\r\n[F]\r\nz\r\n");
    for (const QString& fragment :
         {u"línea 2: no existe la regla «c»"_s, u"línea 3"_s, u"línea 4"_s, u"«nada.txt»"_s,
          u"línea 9: falta «>»"_s, u"línea 11: «>» está delante"_s, u"«F» está repetida"_s})
        EXPECT_TRUE(all.contains(fragment)) << fragment.toStdString() << " not in\n"
                                            << all.toStdString();
    EXPECT_TRUE(faults("[a]\r\n<a><a>\r\n").contains(u"no termina nunca"_s));
    EXPECT_TRUE(faults("[a]\r\n{otro.txt}\r\n").contains(u"no termina nunca"_s));
    EXPECT_TRUE(faults("nada").contains(u"ninguna regla"_s));
}

TEST_F(NameGrammarTest, ReadsRulesAsTheyAreWritten)
{
    EXPECT_EQ(name("[a]\r\n Villa Real \r\n"), u" Villa Real "_s) << "blanks belong to the text";
    EXPECT_EQ(name("[a]\r\n3|Villa\r\n"), u"Villa"_s);
    EXPECT_EQ(name("antes > }\r\n[b] ignorado | <x>\r\n\r\nB\r\n[a]\r\nA"), u"B"_s);
    EXPECT_EQ(name("[a]\n2|uno|dos\n"), u"uno"_s);
    EXPECT_EQ(name("[a]\r0|no\r-2|tampoco\rs\xED"), u"sí"_s);
    EXPECT_EQ(name("[a]\r\n<B>-<b>\r\n[b]\r\nx<C>\r\n[\xD1]\r\nn\r\n[c]\r\n<\xF1>"), u"xn-xn"_s)
        << "letter case doesn't matter in names of rules";
    EXPECT_EQ(name("[a]\r\nuno[b]\r\ndos"), u"uno"_s) << "a bracket always begins a rule";
    EXPECT_EQ(name("[a]\r\na > b }\r\n"), u"a > b }"_s) << "what closes nothing stays";
    EXPECT_EQ(generarNombre(3, u"g.txt"_s), u"a > b }a > b }a > b }"_s);
}

TEST_F(NameGrammarTest, WeightsAndReferencesAreDrawnIndependently)
{
    constexpr int count = 20'000;
    const auto weighted = draws("[a]\r\n3|x\r\n6|y\r\nz\r\n", count);
    EXPECT_NEAR(weighted.value(u"x"_s), count * 0.3, 400); // six standard deviations
    EXPECT_NEAR(weighted.value(u"y"_s), count * 0.6, 400);
    EXPECT_NEAR(weighted.value(u"z"_s), count * 0.1, 300);
    const auto pairs = draws("[a]\r\n<b><b>\r\n[b]\r\n0\r\n1\r\n", count);
    ASSERT_EQ(pairs.size(), 4);
    for (const int times : pairs)
        EXPECT_NEAR(times, count / 4.0, 400);
}

TEST_F(NameGrammarTest, IncludesOtherFiles)
{
    app.write(u"Gram/Uno.txt"_s, "[inicio]\r\n<x>\r\n[x]\r\n{gram/dos.txt}!\r\n");
    app.write(u"Gram/dos.TXT"_s, "[y]\r\ndos\r\n");
    app.write(u"Gram/ocho.txt"_s, "[y]\r\nN\xC3\xBA\r\n");
    const QTemporaryDir outside;
    QFile file(outside.filePath(u"fuera.txt"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("[z]\nfuera\n") > 0);
    file.close();
    const QString beside = u"..\\"_s + QFileInfo(outside.path()).fileName() + u"\\fuera.txt"_s;
    for (const auto& [path, made] : {std::pair(u"gram\\uno.txt"_s, u"dos!"_s),
                                     {u"Gram/dos.TXT"_s, u"dos"_s},
                                     {u".\\GRAM\\..\\gram/UNO.txt"_s, u"dos!"_s},
                                     {u"Gram\\ocho.txt"_s, u"Nú"_s},
                                     {beside, u"fuera"_s},
                                     {outside.filePath(u"FUERA.txt"_s), u"fuera"_s},
                                     {app.path(u"gram\\dos.txt"_s), u"dos"_s},
                                     {u"gram\\tres.txt"_s, {}},
                                     {outside.path().mid(1) + u"/fuera.txt"_s, {}},
                                     {u"Gram"_s, {}}}) {
        SCOPED_TRACE(path.toStdString());
        const QByteArray grammar = "[a]\r\n{" + path.toLatin1() + "}\r\n";
        // The check accepts what can be included, and nothing else.
        EXPECT_EQ(faults(grammar).isEmpty(), !made.isEmpty());
        if (made.isEmpty())
            EXPECT_THROW(name(grammar), platform::Error);
        else
            EXPECT_EQ(name(grammar), made);
    }
    EXPECT_EQ(name("[a]\r\n{gram\\<n>.txt}\r\n[n]\r\nuno\r\n"), u"dos!"_s);
    EXPECT_EQ(faults("[a]\r\n{gram\\<n>.txt}\r\n[n]\r\nuno\r\n"), QString());
}

TEST_F(NameGrammarTest, FaultsAreReportedWithFileRuleAndReason)
{
    expectFault("", {u"ninguna regla"_s});
    expectFault("[a]\r\n<b>\r\n", {u"«b»"_s, u"no existe"_s});
    expectFault("[a]\r\n\r\n0|x\r\n", {u"«a»"_s, u"ninguna alternativa"_s});
    expectFault("[a]\r\nx\r\n[b]\r\n\r\ndos|x\r\n", {u"línea 5"_s, u"«dos»"_s, u"«b»"_s});
    expectFault("[a]\r\n|x\r\n", {u"línea 2"_s, u"número entero"_s});
    expectFault("[a]\r\n2147483647|x\r\n1|y\r\n", {u"línea 3"_s, u"demasiado grandes"_s});
    expectFault("[a]\r\nx\r\n[A]\r\ny\r\n", {u"línea 3"_s, u"«A»"_s, u"repetida"_s});
    expectFault("[a]\r\nx\r\n[b\r\ny\r\n", {u"línea 3"_s, u"«]»"_s});
    expectFault("[a]\r\nx <a\r\n", {u"falta «>»"_s});
    expectFault("[a]\r\n> <a>\r\n", {u"falta «>»"_s});
    expectFault("[a]\r\n{x\r\n", {u"falta «}»"_s});
    expectFault("[a]\r\n} {g.txt}\r\n", {u"falta «}»"_s});
}

TEST_F(NameGrammarTest, EndlessGrammarsStopWithinASecond)
{
    QElapsedTimer timer;
    timer.start();
    expectFault("[a]\r\n<a>\r\n", {u"«a»"_s, u"no termina"_s});
    expectFault("[a]\r\n<a><a>x\r\n", {u"no termina"_s});
    expectFault("[a]\r\n<a>" + QByteArray(5000, 'x') + "\r\n", {u"no termina"_s});
    expectFault("[a]\r\n{g.txt}\r\n", {u"sin fin"_s});
    expectFault("[a]\r\nx{g.txt}{g.txt}\r\n", {u"sin fin"_s});
    expectFault("[a]\r\n<b>" + QByteArray(900'000, 'x') + "\r\n[b]\r\n<b>y\r\n", {u"«b»"_s});
    const QByteArray longName(300'000, 'n');
    expectFault("[a]\r\n<" + longName + ">\r\n[" + longName + "]\r\n<" + longName + ">",
                {u"no termina"_s});

    // Files that include the next one twice; a large file many times over.
    constexpr int depth = 30;
    for (int i = 0; i < depth; ++i) {
        const QByteArray next = "{" + QByteArray::number(i + 1) + ".txt}";
        app.write(u"%1.txt"_s.arg(i), "[a]\r\n" + next + next + "\r\n");
    }
    app.write(u"%1.txt"_s.arg(depth), "[a]\r\nx\r\n");
    EXPECT_EQ(faults("[a]\r\n{18.txt}\r\n"), QString());
    EXPECT_TRUE(faults("[a]\r\n{0.txt}\r\n").contains(u"pasa de 10000 sustituciones"_s));
    expectError([] { generarNombre(1, u"0.txt"_s); }, ErrorNumber::BadFormat, {u"no termina"_s});
    app.write(u"mucho.txt"_s, "[a]\r\nx\r\n" + QByteArray(1'000'000, '\n'));
    QByteArray many = "[a]\r\nx\r\n<b>\r\n[b]\r\n";
    for (int i = 0; i < 9000; ++i)
        many += "{mucho.txt}";
    EXPECT_EQ(faults(many),
              u"g.txt, línea 5: esta alternativa siempre lee más de 16 MB de archivos."_s);
    many.replace("\r\nx\r\n<b>", "\r\n<b>");
    expectFault(many, {u"mucho.txt"_s, u"16 MB"_s});
    EXPECT_LT(timer.elapsed(), 5 * 1000);
}

TEST_F(NameGrammarTest, ShippedNamesFitFilesAndPlaces)
{
    app.addShippedData();
    QSet<QString> names;
    for (int i = 0; i < 2000; ++i) {
        const QString made = generarNombre(1, Procs::placeNames);
        names.insert(made);
        ASSERT_FALSE(made.isEmpty());
        ASSERT_LE(made.size(), 40) << made.toStdString();
        ASSERT_EQ(made, made.simplified());
        for (const QChar c : made)
            ASSERT_TRUE(c.isLetter() || u" -'."_s.contains(c)) << made.toStdString();
    }
    EXPECT_GT(names.size(), 1700);
}
