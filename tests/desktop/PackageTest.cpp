// The Debian package: built by CPack from this build, then looked at as apt and lintian see
// it. Skipped, with the reason, where the Debian tools are missing (./setup.sh test installs
// them).

#include "ToolRun.h"
#include "support/TestEnvironment.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <iostream>
#include <memory>

namespace {

const QString appId = QStringLiteral("com.quorvane.Quorvane");

class DebianPackage : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        if (findTool(QStringLiteral("dpkg-deb")).isEmpty() ||
            findTool(QStringLiteral("dpkg-shlibdeps")).isEmpty()) {
            missingTools = QStringLiteral("dpkg-deb or dpkg-shlibdeps is not installed (Debian "
                                          "package dpkg-dev; ./setup.sh test installs it)");
            return;
        }
        folder = std::make_unique<QTemporaryDir>();
        const QString config =
            QString::fromStdString(TestEnvironment::buildFolder()) + "/CPackConfig.cmake";
        const ToolRun run =
            runTool(QStringLiteral(QUORVANE_CPACK_COMMAND),
                    {QStringLiteral("-G"), QStringLiteral("DEB"), QStringLiteral("--config"),
                     config, QStringLiteral("-B"), folder->path()},
                    600000);
        cpackOutput = run.output;
        const QStringList debs =
            QDir(folder->path()).entryList({QStringLiteral("quorvane_*.deb")}, QDir::Files);
        if (run.succeeded() && debs.size() == 1)
            deb = folder->filePath(debs.first());
    }
    static void TearDownTestSuite() { folder.reset(); }

    void SetUp() override {
        if (!missingTools.isEmpty())
            GTEST_SKIP() << missingTools.toStdString();
        ASSERT_FALSE(deb.isEmpty()) << cpackOutput.toStdString();
    }

    static QString field(const QString& name) {
        return runTool(QStringLiteral("dpkg-deb"), {QStringLiteral("--field"), deb, name})
            .output.trimmed();
    }

    static std::unique_ptr<QTemporaryDir> folder;
    static QString deb;
    static QString cpackOutput;
    static QString missingTools;
};

std::unique_ptr<QTemporaryDir> DebianPackage::folder;
QString DebianPackage::deb;
QString DebianPackage::cpackOutput;
QString DebianPackage::missingTools;

TEST_F(DebianPackage, ControlFieldsAndDependsFromTheSharedLibraries) {
    const QString architecture =
        runTool(QStringLiteral("dpkg"), {QStringLiteral("--print-architecture")}).output.trimmed();
    EXPECT_EQ(QFileInfo(deb).fileName(),
              QStringLiteral("quorvane_1.20205_%1.deb").arg(architecture));
    EXPECT_EQ(field(QStringLiteral("Package")), QStringLiteral("quorvane"));
    EXPECT_EQ(field(QStringLiteral("Version")), QStringLiteral("1.20205"));
    EXPECT_EQ(field(QStringLiteral("Architecture")), architecture);
    EXPECT_EQ(field(QStringLiteral("Section")), QStringLiteral("utils"));
    EXPECT_EQ(field(QStringLiteral("Maintainer")),
              QStringLiteral("Velmara <support@quorvane.com>"));
    EXPECT_EQ(field(QStringLiteral("Recommends")), QStringLiteral("fonts-dejavu-core"));

    // dpkg-shlibdeps found every library the programs link, each with its least version.
    const QString depends = field(QStringLiteral("Depends"));
    for (const char* library :
         {"libc6", "libstdc++6", "libqt5core5a", "libqt5gui5", "libqt5widgets5", "libqt5network5",
          "libqt5webkit5", "libqcustomplot2.1"}) {
        const QRegularExpression entry(
            QStringLiteral("(^|, )%1 \\(>= [^)]+\\)")
                .arg(QRegularExpression::escape(QString::fromLatin1(library))));
        EXPECT_TRUE(entry.match(depends).hasMatch()) << library << " in " << depends.toStdString();
    }
    // The regular expressions of the hand history import; Debian versions this library in
    // its name.
    EXPECT_TRUE(QRegularExpression(QStringLiteral("(^|, )libboost-regex1\\.74\\.0"))
                    .match(depends)
                    .hasMatch())
        << depends.toStdString();
    const QStringList description = field(QStringLiteral("Description")).split(QLatin1Char('\n'));
    ASSERT_GE(description.size(), 3);
    EXPECT_EQ(description[0],
              QStringLiteral("equity and hand strength analysis for two-player Texas Hold'em"));
    EXPECT_TRUE(description.contains(QStringLiteral(" ."))); // the paragraph break
}

TEST_F(DebianPackage, HoldsTheInstalledFilesOwnedByRoot) {
    const ToolRun contents =
        runTool(QStringLiteral("dpkg-deb"), {QStringLiteral("--contents"), deb});
    ASSERT_TRUE(contents.succeeded()) << contents.output.toStdString();
    QSet<QString> files;
    for (const QString& line : contents.output.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        // drwxr-xr-x root/root         0 2026-11-25 12:00 ./usr/bin/
        const QStringList columns = line.simplified().split(QLatin1Char(' '));
        ASSERT_GE(columns.size(), 6) << line.toStdString();
        EXPECT_EQ(columns[1], QStringLiteral("root/root")) << line.toStdString();
        const QString path = columns[5];
        if (path.endsWith(QLatin1Char('/'))) {
            EXPECT_EQ(columns[0], QStringLiteral("drwxr-xr-x")) << line.toStdString();
            continue;
        }
        files.insert(path);
        const bool program = path.startsWith(QStringLiteral("./usr/bin/"));
        EXPECT_EQ(columns[0], program ? QStringLiteral("-rwxr-xr-x") : QStringLiteral("-rw-r--r--"))
            << line.toStdString();
    }
    for (const char* program : {"quorvane", "quorvane-eval", "quorvane-eval-schemas"}) {
        EXPECT_TRUE(files.contains(QStringLiteral("./usr/bin/") + program)) << program;
        EXPECT_TRUE(files.contains(QStringLiteral("./usr/share/man/man1/%1.1.gz").arg(program)));
    }
    EXPECT_TRUE(files.contains(QStringLiteral("./usr/share/applications/%1.desktop").arg(appId)));
    EXPECT_TRUE(files.contains(QStringLiteral("./usr/share/metainfo/%1.metainfo.xml").arg(appId)));
    EXPECT_TRUE(files.contains(QStringLiteral("./usr/share/mime/packages/%1.xml").arg(appId)));
    EXPECT_TRUE(files.contains(QStringLiteral("./usr/share/doc/quorvane/copyright")));
    EXPECT_TRUE(files.contains(QStringLiteral("./usr/share/doc/quorvane/changelog.gz")));
    EXPECT_TRUE(
        files.contains(QStringLiteral("./usr/share/icons/hicolor/512x512/apps/%1.png").arg(appId)));
    EXPECT_TRUE(files.contains(
        QStringLiteral("./usr/share/icons/hicolor/scalable/apps/%1.svg").arg(appId)));
    // The same 41 files as an install into a DESTDIR (InstallTest checks those one by one).
    EXPECT_EQ(files.size(), 41);
}

TEST_F(DebianPackage, LintianFindsNoError) {
    const QString lintian = findTool(QStringLiteral("lintian"));
    if (lintian.isEmpty())
        GTEST_SKIP() << "lintian is not installed (./setup.sh test installs it)";
    const ToolRun run = runTool(lintian,
                                {QStringLiteral("--fail-on"), QStringLiteral("error"),
                                 QStringLiteral("--tag-display-limit"), QStringLiteral("0"), deb},
                                600000);
    // Everything lintian says goes to the log; only errors fail.
    std::cout << "lintian:\n" << run.output.toStdString() << std::endl;
    EXPECT_TRUE(run.succeeded()) << run.output.toStdString();
    for (const QString& line : run.output.split(QLatin1Char('\n')))
        EXPECT_FALSE(line.startsWith(QStringLiteral("E: "))) << line.toStdString();
}

TEST_F(DebianPackage, AptCanInstallIt) {
    const QString apt = findTool(QStringLiteral("apt-get"));
    if (apt.isEmpty())
        GTEST_SKIP() << "apt-get is not installed";
    // A simulation: it resolves the dependencies against this system's package lists
    // without changing anything.
    const ToolRun run = runTool(apt,
                                {QStringLiteral("install"), QStringLiteral("--simulate"),
                                 QStringLiteral("--no-install-recommends"), deb},
                                300000);
    EXPECT_TRUE(run.succeeded()) << run.output.toStdString();
    EXPECT_TRUE(run.output.contains(QStringLiteral("Inst quorvane"))) << run.output.toStdString();
}

} // namespace
