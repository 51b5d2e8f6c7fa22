// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/certificateinfomodel.h"
#include "qca/base/providers.h"
#include "tests/certificates/certificatefactory.h"
#include "tests/certificates/flat.h"
#include "tests/support/marktranslator.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QtTest>

using TrivexTest::CertificateFactory;
using TrivexTest::Flat;

class TestCertificateInfoModel : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void insertions();
    void labelsAndSections();
    void values();
    void invalidReads();
    void nullCertificate();

private:
    static QString cell(const CertificateInfoModel &model, int row, int role)
    {
        return model.data(model.index(row, 0), role).toString();
    }

    const TrivexTest::MarkTranslator m_marks;
    QCA::Initializer m_qca;
    CertificateFactory m_factory;
};

void TestCertificateInfoModel::initTestCase()
{
    QVERIFY2(m_factory.isValid(), "the openssl program is needed");
    Trivex::rankProviders();
}

void TestCertificateInfoModel::insertions()
{
    Certificate certificate(m_factory.selfSigned(QStringLiteral("/CN=Name")));
    Certificate other(m_factory.selfSigned(QStringLiteral("/CN=Other")));
    Flat<CertificateInfoModel> model;
    QAbstractItemModelTester tester(&model);
    QSignalSpy changed(&model, &CertificateInfoModel::certificateChanged);
    QSignalSpy info(&model, &CertificateInfoModel::infoChanged);
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    int changesAtInfo = -1;
    connect(&model, &CertificateInfoModel::infoChanged, this,
            [&] { changesAtInfo = changed.count(); });
    model.setCertificate(nullptr);
    QCOMPARE(model.rowCount(), 0);
    QCOMPARE(changed.count() + info.count(), 0);
    model.setCertificate(&certificate);
    model.setCertificate(&certificate);
    model.setCertificate(nullptr);
    QCOMPARE(model.certificate(), &certificate);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(info.count(), 1);
    QCOMPARE(changesAtInfo, 0); // the rows are announced first
    QCOMPARE(model.rowCount(), 25);
    QCOMPARE(inserted.count(), 25);
    for (int row = 0; row < 25; ++row) {
        QCOMPARE(inserted.at(row).at(1).toInt(), row);
        QCOMPARE(inserted.at(row).at(2).toInt(), row);
    }
    model.setCertificate(&other);
    QCOMPARE(model.rowCount(), 25);
    QCOMPARE(removed.count() + reset.count(), 0); // the old rows go without a word
    QCOMPARE(inserted.count(), 50);
    QCOMPARE(cell(model, 0, CertificateInfoModel::ValueRole), QStringLiteral("Other"));
}

void TestCertificateInfoModel::labelsAndSections()
{
    static const char *const rows[][2] = {
        {"issuer", ""},
        {"serial_number", ""},
        {"sign_alg", ""},
        {"subject_name", "subject"},
        {"subject_organization", "subject"},
        {"subject_email", "subject"},
        {"subject_organization_unit", "subject"},
        {"subject_country_code", "subject"},
        {"subject_state", "subject"},
        {"subject_locality", "subject"},
        {"subject_address", "subject"},
        {"subject_inn", "subject"},
        {"subject_snils", "subject"},
        {"subject_ogrn", "subject"},
        {"subject_innle", "subject"},
        {"subject_ogrnip", "subject"},
        {"subject_identification_kind", "subject"},
        {"validity_from", "validity"},
        {"validity_to", "validity"},
        {"public_key_id", "public_key"},
        {"public_key_algorithm", "public_key"},
        {"public_key_Marker", "public_key"},
        {"private_key_id", "private_key"},
        {"private_key_location", "private_key"},
        {"private_key_manufacturer", "private_key"},
    };
    const QString prefix = QStringLiteral("tr:trivex-p-la-");
    Certificate certificate(m_factory.selfSigned(QStringLiteral("/CN=Name")));
    CertificateInfoModel model;
    model.setCertificate(&certificate);
    for (int row = 0; row < 25; ++row) {
        QCOMPARE(cell(model, row, CertificateInfoModel::LabelRole),
                 prefix + QLatin1String(rows[row][0]));
        const QString section = QLatin1String(rows[row][1]);
        QCOMPARE(cell(model, row, CertificateInfoModel::SectionRole),
                 section.isEmpty() ? QString() : prefix + section);
    }
}

/// Answers every virtual getter with its own name.
class NamedGetters : public Certificate {
public:
    using Certificate::Certificate;
#define NAMED(getter)                                                                              \
    QString getter() const override                                                                \
    {                                                                                              \
        return QStringLiteral(#getter);                                                            \
    }
    NAMED(issuer)
    NAMED(signatureAlgorithm)
    NAMED(subjectName)
    NAMED(subjectOrganization)
    NAMED(subjectEmail)
    NAMED(subjectOrganizationalUnit)
    NAMED(subjectCountryCode)
    NAMED(subjectCountry)
    NAMED(subjectLocality)
    NAMED(subjecAddress)
    NAMED(subjectInn)
    NAMED(subjectSnils)
    NAMED(subjectOgrn)
    NAMED(subjectInnle)
    NAMED(subjectOgrnip)
    NAMED(subjectIdentificationKind)
    NAMED(publicKeyId)
    NAMED(publicKeyTypeAlgorithm)
    NAMED(publicKeyMarker)
    NAMED(privateKeyAvailability)
    NAMED(privateKeyLocation)
    NAMED(privateKeyManufacturer)
#undef NAMED
};

void TestCertificateInfoModel::values()
{
    NamedGetters certificate(m_factory.selfSigned(
        QStringLiteral("/CN=Name"), {QStringLiteral("-set_serial"), QStringLiteral("0x014A0F")}));
    CertificateInfoModel model;
    model.setCertificate(&certificate);
    const QString pattern = QStringLiteral("hh:mm, dd.MM.yyyy");
    const QStringList wanted = {
        QStringLiteral("issuer"),
        QStringLiteral("01:4A:0F"),
        QStringLiteral("signatureAlgorithm"),
        QStringLiteral("subjectName"),
        QStringLiteral("subjectOrganization"),
        QStringLiteral("subjectEmail"),
        QStringLiteral("subjectOrganizationalUnit"),
        QStringLiteral("subjectCountryCode"),
        QStringLiteral("subjectCountry"),
        QStringLiteral("subjectLocality"),
        QStringLiteral("subjecAddress"),
        QStringLiteral("subjectInn"),
        QStringLiteral("subjectSnils"),
        QStringLiteral("subjectOgrn"),
        QStringLiteral("subjectInnle"),
        QStringLiteral("subjectOgrnip"),
        QStringLiteral("subjectIdentificationKind"),
        certificate.notValidBefore().toString(pattern),
        certificate.notValidAfter().toString(pattern),
        QStringLiteral("publicKeyId"),
        QStringLiteral("publicKeyTypeAlgorithm"),
        QStringLiteral("publicKeyMarker"),
        QStringLiteral("privateKeyAvailability"),
        QStringLiteral("privateKeyLocation"),
        QStringLiteral("privateKeyManufacturer"),
    };
    for (int row = 0; row < 25; ++row)
        QCOMPARE(cell(model, row, CertificateInfoModel::ValueRole), wanted.at(row));
}

void TestCertificateInfoModel::invalidReads()
{
    // Next to nothing in the subject: the optional rows are there and empty.
    Certificate certificate(m_factory.selfSigned(QStringLiteral("/CN=Name")));
    CertificateInfoModel model;
    model.setCertificate(&certificate);
    QCOMPARE(model.rowCount(), 25);
    for (const int row : {5, 11, 12, 13, 14, 15, 16})
        QCOMPARE(model.data(model.index(row, 0), CertificateInfoModel::ValueRole),
                 QVariant(QString()));
    for (const int role : {CertificateInfoModel::LabelRole - 1,
                           CertificateInfoModel::SectionRole + 1, int(Qt::DisplayRole)})
        QVERIFY(!model.data(model.index(0, 0), role).isValid());
    QVERIFY(!model.data(QModelIndex(), CertificateInfoModel::LabelRole).isValid());
    // An index of another model has a row that this one lacks.
    CertificateInfoModel empty;
    QVERIFY(!empty.data(model.index(0, 0), CertificateInfoModel::LabelRole).isValid());
    const QHash<int, QByteArray> names = {{257, "label"}, {258, "value"}, {259, "section"}};
    QCOMPARE(model.roleNames(), names);
}

void TestCertificateInfoModel::nullCertificate()
{
    Certificate certificate;
    CertificateInfoModel model;
    model.setCertificate(&certificate);
    QCOMPARE(model.rowCount(), 25);
    for (int row = 0; row < 25; ++row)
        QCOMPARE(model.data(model.index(row, 0), CertificateInfoModel::ValueRole),
                 QVariant(QString()));
}

QTEST_GUILESS_MAIN(TestCertificateInfoModel)
#include "tst_certificateinfomodel.moc"
