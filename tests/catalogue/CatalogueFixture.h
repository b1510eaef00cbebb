#pragma once
// A catalogue in a scratch folder for each test, with its settings beside it,
// so that no test reads or writes the user's own. Rows go in through a
// connection of the fixture's own rather than the store layer under test.

#include "catalogue/Comunes.h"
#include "catalogue/Settings.h"
#include "catalogue/Store.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>
#include <QVariantList>
#include <vector>

namespace cintal::test {

inline std::string S(const QString& text) {
    return text.toStdString();
}

inline QByteArray Contents(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

inline void WriteFile(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(bytes);
}

// Runs sql on the file with the values bound in order; returns the rows.
inline std::vector<QVariantList> Sql(const QString& path, const QString& sql,
                                     const QVariantList& values = {}) {
    std::vector<QVariantList> rows;
    QString error;
    {
        QSqlDatabase c = QSqlDatabase::addDatabase("QSQLITE", "fixture");
        c.setDatabaseName(path);
        QSqlQuery q(c);
        if (!c.open() || !q.prepare(sql)) {
            error = c.lastError().text() + q.lastError().text();
        } else {
            for (const QVariant& v : values)
                q.addBindValue(v);
            if (!q.exec()) error = q.lastError().text();
            while (q.next()) {
                QVariantList row;
                for (int i = 0; i < q.record().count(); ++i)
                    row << q.value(i);
                rows.push_back(row);
            }
        }
        q.finish();
        c.close();
    }
    QSqlDatabase::removeDatabase("fixture");
    EXPECT_TRUE(error.isEmpty()) << S(sql) << ": " << S(error);
    return rows;
}

class CatalogueTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        UseSettingsFile(dir.filePath("cintal.ini"));
        Comunes::Reset();
    }
    void TearDown() override {
        Comunes::Reset();
        UseSettingsFile({});
    }

    void Create() {
        QString reason;
        ASSERT_TRUE(Store::CreateEmpty(db, &reason)) << S(reason);
    }
    // The registers loaded from the catalogue, as the program does at start.
    void Open() {
        QString reason;
        ASSERT_TRUE(Comunes::InitGlobals(db, &reason)) << S(reason);
    }
    // The key of the row last added to table.
    qint64 LastId(const char* table, const char* key) {
        return Sql(db, QStringLiteral("SELECT max(%1) FROM %2").arg(key, table))[0][0].toLongLong();
    }
    void Publisher(qint64 id, const QString& name) {
        Sql(db, "INSERT INTO Publishers (IdPub, PublisherName) VALUES (?, ?)", {id, name});
    }
    void Path(qint64 index, const QString& dir) {
        Sql(db, "INSERT INTO Paths (PathIndex, GameDir) VALUES (?, ?)", {index, dir});
    }
    void Title(const QString& name, const QVariant& year, qint64 idPub, const QString& type,
               int haveIt, const QVariant& estado) {
        Sql(db,
            "INSERT INTO Titles (Name, Year, IdPub, Type, HaveIt, Estado) "
            "VALUES (?, ?, ?, ?, ?, ?)",
            {name, year, idPub, type, haveIt, estado});
    }

    // Each row as "a|b|c", NULL spelt out.
    std::vector<std::string> Rows(const QString& sql) {
        std::vector<std::string> out;
        for (const QVariantList& row : Sql(db, sql)) {
            QStringList cells;
            for (const QVariant& v : row)
                cells << (v.isNull() ? QStringLiteral("NULL") : v.toString());
            out.push_back(S(cells.join('|')));
        }
        return out;
    }
    // Every row of the four tables, behind its table's name.
    std::vector<std::string> AllRows() {
        std::vector<std::string> all;
        for (const char* table : {"Titles", "tFiles", "Paths", "Publishers"})
            for (const std::string& r : Rows(QStringLiteral("SELECT * FROM %1").arg(table)))
                all.push_back(table + ('|' + r));
        return all;
    }

    QTemporaryDir dir;
    QString db = dir.filePath("cintal.mdb");
};

} // namespace cintal::test
