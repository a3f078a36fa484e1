// `cmake --install` into a temporary DESTDIR, checked file by file, and the desktop files
// checked by the validators of the desktop (desktop-file-validate, appstreamcli,
// update-mime-database) and against each other.

#include "ToolRun.h"
#include "support/TestEnvironment.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <gtest/gtest.h>

#include <memory>

namespace {

const QString appId = QStringLiteral("com.quorvane.Quorvane");
const QList<int> iconSizes = {16, 22, 24, 32, 48, 64, 128, 256, 512};
const QStringList mimeTypes = {QStringLiteral("application/x-quorvane-analysis"),
                               QStringLiteral("application/x-quorvane-tree")};
const QStringList programs = {QStringLiteral("quorvane"), QStringLiteral("quorvane-eval"),
                              QStringLiteral("quorvane-eval-schemas")};

QString sourcePath(const QString& relative) {
    return QString::fromStdString(TestEnvironment::sourceFolder()) + QLatin1Char('/') + relative;
}

QByteArray contentOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    return file.readAll();
}

// Installs the build into `destdir` under `prefix`; the installer's output on failure.
ToolRun install(const QString& destdir, const QString& prefix) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DESTDIR"), destdir);
    return runTool(QStringLiteral(QUORVANE_CMAKE_COMMAND),
                   {QStringLiteral("--install"),
                    QString::fromStdString(TestEnvironment::buildFolder()),
                    QStringLiteral("--prefix"), prefix},
                   120000, environment);
}

// Every file below `root`, as paths relative to it, sorted.
QStringList filesBelow(const QString& root) {
    QStringList found;
    QDirIterator walk(root, QDir::Files | QDir::Hidden | QDir::System,
                      QDirIterator::Subdirectories);
    while (walk.hasNext())
        found.append(QDir(root).relativeFilePath(walk.next()));
    found.sort();
    return found;
}

QString iconPath(int size, const QString& context, const QString& name) {
    return QStringLiteral("usr/share/icons/hicolor/%1x%1/%2/%3.png").arg(size).arg(context, name);
}

QString mimeIconName(const QString& type) {
    return QString(type).replace(QLatin1Char('/'), QLatin1Char('-'));
}

// What an install under /usr must hold, and nothing else.
QStringList expectedFiles() {
    QStringList files;
    for (const QString& program : programs)
        files << QStringLiteral("usr/bin/") + program
              << QStringLiteral("usr/share/man/man1/%1.1.gz").arg(program);
    files << QStringLiteral("usr/share/applications/%1.desktop").arg(appId)
          << QStringLiteral("usr/share/metainfo/%1.metainfo.xml").arg(appId)
          << QStringLiteral("usr/share/mime/packages/%1.xml").arg(appId)
          << QStringLiteral("usr/share/doc/quorvane/copyright")
          << QStringLiteral("usr/share/doc/quorvane/changelog.gz");
    files << QStringLiteral("usr/share/icons/hicolor/scalable/apps/%1.svg").arg(appId);
    for (const QString& type : mimeTypes)
        files << QStringLiteral("usr/share/icons/hicolor/scalable/mimetypes/%1.svg")
                     .arg(mimeIconName(type));
    for (int size : iconSizes) {
        files << iconPath(size, QStringLiteral("apps"), appId);
        for (const QString& type : mimeTypes)
            files << iconPath(size, QStringLiteral("mimetypes"), mimeIconName(type));
    }
    files.sort();
    return files;
}

// The key's value in the [Desktop Entry] group of a desktop file.
QString desktopValue(const QByteArray& entry, const QString& key) {
    const QRegularExpression line(QStringLiteral("^%1=(.*)$").arg(QRegularExpression::escape(key)),
                                  QRegularExpression::MultilineOption);
    return line.match(QString::fromUtf8(entry)).captured(1);
}

class Installed : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        folder = std::make_unique<QTemporaryDir>();
        ASSERT_TRUE(folder->isValid());
        const ToolRun run = install(folder->path(), QStringLiteral("/usr"));
        installOutput = run.output;
        installed = run.succeeded();
    }
    static void TearDownTestSuite() { folder.reset(); }

    void SetUp() override { ASSERT_TRUE(installed) << installOutput.toStdString(); }

    static QString path(const QString& relative) {
        return folder->path() + QLatin1Char('/') + relative;
    }

    static std::unique_ptr<QTemporaryDir> folder;
    static bool installed;
    static QString installOutput;
};

std::unique_ptr<QTemporaryDir> Installed::folder;
bool Installed::installed = false;
QString Installed::installOutput;

TEST_F(Installed, EveryFileInItsPlaceAndNothingElse) {
    const QStringList found = filesBelow(folder->path());
    const QStringList expected = expectedFiles();
    EXPECT_EQ(expected.size(), 3 * 2 + 5 + 3 + 9 * 3);
    for (const QString& file : expected)
        EXPECT_TRUE(found.contains(file)) << "missing: " << file.toStdString();
    for (const QString& file : found)
        EXPECT_TRUE(expected.contains(file)) << "not expected: " << file.toStdString();
}

TEST_F(Installed, ProgramsAreTheBuiltOnesAndExecutable) {
    const QString build = QString::fromStdString(TestEnvironment::buildFolder());
    for (const QString& program : programs) {
        const QFileInfo file(path(QStringLiteral("usr/bin/") + program));
        EXPECT_TRUE(file.isExecutable()) << program.toStdString();
        EXPECT_EQ(file.size(), QFileInfo(build + QLatin1Char('/') + program).size())
            << program.toStdString();
    }
}

TEST_F(Installed, InstalledEvaluatorFindsItsHelper) {
    // `hits` starts quorvane-eval-schemas from quorvane-eval's own folder.
    QTemporaryDir home;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), home.path());
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home.path());
    const ToolRun run = runTool(path(QStringLiteral("usr/bin/quorvane-eval")),
                                {QStringLiteral("hits"), QStringLiteral("AA"),
                                 QStringLiteral("--board"), QStringLiteral("Ah7d2c")},
                                60000, environment);
    EXPECT_TRUE(run.succeeded()) << run.output.toStdString();
    // Every combination of aces on this board is three of a kind.
    EXPECT_TRUE(run.output.contains(QStringLiteral("Three of a Kind")) ||
                run.output.contains(QStringLiteral("Set")))
        << run.output.toStdString();
}

TEST_F(Installed, DesktopFilesAreTheSources) {
    EXPECT_EQ(contentOf(path(QStringLiteral("usr/share/applications/%1.desktop").arg(appId))),
              contentOf(sourcePath(QStringLiteral("desktop/%1.desktop").arg(appId))));
    EXPECT_EQ(contentOf(path(QStringLiteral("usr/share/metainfo/%1.metainfo.xml").arg(appId))),
              contentOf(sourcePath(QStringLiteral("desktop/%1.metainfo.xml").arg(appId))));
    EXPECT_EQ(contentOf(path(QStringLiteral("usr/share/mime/packages/%1.xml").arg(appId))),
              contentOf(sourcePath(QStringLiteral("desktop/%1.mime.xml").arg(appId))));
    EXPECT_FALSE(contentOf(path(QStringLiteral("usr/share/doc/quorvane/copyright"))).isEmpty());
}

TEST_F(Installed, DesktopEntryPassesTheValidatorAndABrokenOneDoesNot) {
    const QString validator = findTool(QStringLiteral("desktop-file-validate"));
    if (validator.isEmpty())
        GTEST_SKIP() << "desktop-file-validate is not installed (Debian package "
                        "desktop-file-utils; ./setup.sh test installs it)";
    const QString entry = path(QStringLiteral("usr/share/applications/%1.desktop").arg(appId));
    const ToolRun run = runTool(validator, {entry});
    EXPECT_TRUE(run.succeeded()) << run.output.toStdString();
    EXPECT_TRUE(run.output.trimmed().isEmpty()) << run.output.toStdString();

    // The validator is not one that passes everything.
    QTemporaryDir scratch;
    const QString broken = scratch.filePath(appId + QStringLiteral(".desktop"));
    QFile file(broken);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(contentOf(entry).replace("Type=Application", "Type=Program"));
    file.close();
    EXPECT_FALSE(runTool(validator, {broken}).succeeded());
}

TEST_F(Installed, DesktopEntryAgreesWithTheOtherFiles) {
    const QByteArray entry =
        contentOf(path(QStringLiteral("usr/share/applications/%1.desktop").arg(appId)));
    EXPECT_EQ(desktopValue(entry, QStringLiteral("Exec")), QStringLiteral("quorvane %F"));
    EXPECT_EQ(desktopValue(entry, QStringLiteral("TryExec")), QStringLiteral("quorvane"));
    EXPECT_EQ(desktopValue(entry, QStringLiteral("Icon")), appId);
    // The class the program's windows carry: Qt takes it from the application name.
    EXPECT_EQ(desktopValue(entry, QStringLiteral("StartupWMClass")), QStringLiteral("Quorvane"));
    EXPECT_EQ(desktopValue(entry, QStringLiteral("MimeType")),
              mimeTypes.join(QLatin1Char(';')) + QLatin1Char(';'));
    for (int size : iconSizes)
        EXPECT_TRUE(QFile::exists(path(iconPath(size, QStringLiteral("apps"), appId)))) << size;
}

TEST_F(Installed, MetainfoPassesTheValidatorAndABrokenOneDoesNot) {
    const QString validator = findTool(QStringLiteral("appstreamcli"));
    if (validator.isEmpty())
        GTEST_SKIP() << "appstreamcli is not installed (Debian package appstream; "
                        "./setup.sh test installs it)";
    const QString metainfo = path(QStringLiteral("usr/share/metainfo/%1.metainfo.xml").arg(appId));
    const ToolRun run =
        runTool(validator, {QStringLiteral("validate"), QStringLiteral("--no-net"), metainfo});
    EXPECT_TRUE(run.succeeded()) << run.output.toStdString();

    QTemporaryDir scratch;
    const QString broken = scratch.filePath(appId + QStringLiteral(".metainfo.xml"));
    QFile file(broken);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    QByteArray text = contentOf(metainfo);
    text.replace("<summary>", "<!--").replace("</summary>", "-->");
    file.write(text);
    file.close();
    EXPECT_FALSE(
        runTool(validator, {QStringLiteral("validate"), QStringLiteral("--no-net"), broken})
            .succeeded());
}

TEST_F(Installed, MetainfoDescribesTheProgramWithScreenshots) {
    QFile file(path(QStringLiteral("usr/share/metainfo/%1.metainfo.xml").arg(appId)));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&file);
    int paragraphs = 0;
    int screenshots = 0;
    QString launchable;
    QStringList binaries;
    QStringList mediaTypes;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        const QStringRef name = xml.name();
        if (name == QLatin1String("p"))
            ++paragraphs;
        else if (name == QLatin1String("screenshot"))
            ++screenshots;
        else if (name == QLatin1String("launchable"))
            launchable = xml.readElementText();
        else if (name == QLatin1String("binary"))
            binaries << xml.readElementText();
        else if (name == QLatin1String("mediatype"))
            mediaTypes << xml.readElementText();
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    EXPECT_GE(paragraphs, 2);
    EXPECT_GE(screenshots, 2);
    EXPECT_EQ(launchable, appId + QStringLiteral(".desktop"));
    EXPECT_EQ(binaries, (QStringList{QStringLiteral("quorvane"), QStringLiteral("quorvane-eval")}));
    for (const QString& binary : binaries)
        EXPECT_TRUE(QFileInfo(path(QStringLiteral("usr/bin/") + binary)).isExecutable());
    EXPECT_EQ(mediaTypes, mimeTypes);
}

TEST_F(Installed, MimeDatabaseKnowsBothTypesWithTheirIcons) {
    const QString updater = findTool(QStringLiteral("update-mime-database"));
    if (updater.isEmpty())
        GTEST_SKIP() << "update-mime-database is not installed (Debian package "
                        "shared-mime-info; ./setup.sh test installs it)";
    // The database is built where the package's file lies, as the system's trigger does.
    const QString mime = path(QStringLiteral("usr/share/mime"));
    const ToolRun run = runTool(updater, {QStringLiteral("-V"), mime});
    EXPECT_TRUE(run.succeeded()) << run.output.toStdString();
    EXPECT_FALSE(run.output.contains(QStringLiteral("Error"), Qt::CaseInsensitive))
        << run.output.toStdString();
    EXPECT_FALSE(run.output.contains(QStringLiteral("Warning"), Qt::CaseInsensitive))
        << run.output.toStdString();
    const QString globs = QString::fromUtf8(contentOf(mime + QStringLiteral("/globs2")));
    EXPECT_TRUE(globs.contains(QStringLiteral(":application/x-quorvane-analysis:*.qva")))
        << globs.toStdString();
    EXPECT_TRUE(globs.contains(QStringLiteral(":application/x-quorvane-tree:*.qvt")))
        << globs.toStdString();
    const QString icons = QString::fromUtf8(contentOf(mime + QStringLiteral("/icons")));
    for (const QString& type : mimeTypes) {
        EXPECT_TRUE(icons.contains(type + QLatin1Char(':') + mimeIconName(type)))
            << icons.toStdString();
        for (int size : iconSizes)
            EXPECT_TRUE(QFile::exists(
                path(iconPath(size, QStringLiteral("mimetypes"), mimeIconName(type)))));
    }
    // XML with the root element of the analysis is known without the extension.
    const QString xmlRoots = QString::fromUtf8(contentOf(mime + QStringLiteral("/XMLnamespaces")));
    EXPECT_TRUE(
        xmlRoots.contains(QStringLiteral("QuorvaneAnalysis application/x-quorvane-analysis")))
        << xmlRoots.toStdString();
    // What the trigger made is no part of the installation: clean up for the other tests.
    for (const QString& made : QDir(mime).entryList(QDir::AllEntries | QDir::NoDotAndDotDot))
        if (made != QLatin1String("packages")) {
            QFileInfo info(mime + QLatin1Char('/') + made);
            if (info.isDir())
                QDir(info.filePath()).removeRecursively();
            else
                QFile::remove(info.filePath());
        }
}

TEST_F(Installed, IconsHaveTheSizeOfTheirFolder) {
    for (int size : iconSizes) {
        const QImage app(path(iconPath(size, QStringLiteral("apps"), appId)));
        ASSERT_FALSE(app.isNull()) << size;
        EXPECT_EQ(app.size(), QSize(size, size));
        // The tile fills the middle; the corners of the rounded tile stay transparent.
        EXPECT_EQ(qAlpha(app.pixel(size / 2, size / 2)), 255) << size;
        EXPECT_LT(qAlpha(app.pixel(0, 0)), 16) << size;
        for (const QString& type : mimeTypes) {
            const QImage file(
                path(iconPath(size, QStringLiteral("mimetypes"), mimeIconName(type))));
            ASSERT_FALSE(file.isNull()) << size;
            EXPECT_EQ(file.size(), QSize(size, size));
        }
    }
    const QStringList scalable = {QStringLiteral("apps/") + appId,
                                  QStringLiteral("mimetypes/") + mimeIconName(mimeTypes[0]),
                                  QStringLiteral("mimetypes/") + mimeIconName(mimeTypes[1])};
    for (const QString& name : scalable) {
        QFile svg(path(QStringLiteral("usr/share/icons/hicolor/scalable/%1.svg").arg(name)));
        ASSERT_TRUE(svg.open(QIODevice::ReadOnly)) << name.toStdString();
        QXmlStreamReader xml(&svg);
        ASSERT_TRUE(xml.readNextStartElement());
        EXPECT_EQ(xml.name().toString(), QStringLiteral("svg"));
        while (!xml.atEnd())
            xml.readNext();
        EXPECT_FALSE(xml.hasError()) << name.toStdString();
    }
}

TEST_F(Installed, ManPagesAreCompressedWithoutTimeStampAndRender) {
    for (const QString& program : programs) {
        const QString page = path(QStringLiteral("usr/share/man/man1/%1.1.gz").arg(program));
        const QByteArray packed = contentOf(page);
        ASSERT_GE(packed.size(), 10) << program.toStdString();
        EXPECT_EQ(static_cast<unsigned char>(packed[0]), 0x1f);
        EXPECT_EQ(static_cast<unsigned char>(packed[1]), 0x8b);
        // gzip -n: no time stamp, so the package is the same at every build.
        EXPECT_EQ(packed.mid(4, 4), QByteArray(4, '\0')) << program.toStdString();
        const ToolRun unpacked = runTool(QStringLiteral("gzip"), {QStringLiteral("-dc"), page});
        ASSERT_TRUE(unpacked.succeeded());
        EXPECT_EQ(unpacked.output.toUtf8(),
                  contentOf(sourcePath(QStringLiteral("docs/%1.1").arg(program))));

        const QString man = findTool(QStringLiteral("man"));
        if (man.isEmpty())
            continue;
        const ToolRun rendered = runTool(man, {QStringLiteral("--warnings"), QStringLiteral("-l"),
                                               QStringLiteral("-Tutf8"), page});
        EXPECT_TRUE(rendered.succeeded()) << rendered.output.toStdString();
        // Bold and underline come as overstrikes ("N\bN") when the output is no terminal.
        QString text = rendered.output;
        text.remove(QRegularExpression(QStringLiteral(".\b")));
        EXPECT_TRUE(text.contains(QStringLiteral("NAME\n       ") + program + QLatin1Char(' ')))
            << text.toStdString();
        EXPECT_FALSE(text.contains(QStringLiteral("warning:"))) << text.toStdString();
    }
}

TEST(InstallPrefix, AnyPrefixKeepsEverythingBelowIt) {
    QTemporaryDir destdir;
    ASSERT_TRUE(destdir.isValid());
    const ToolRun run = install(destdir.path(), QStringLiteral("/opt/quorvane"));
    ASSERT_TRUE(run.succeeded()) << run.output.toStdString();
    const QStringList found = filesBelow(destdir.path());
    EXPECT_EQ(found.size(), expectedFiles().size());
    for (const QString& file : found)
        EXPECT_TRUE(file.startsWith(QStringLiteral("opt/quorvane/"))) << file.toStdString();
    EXPECT_TRUE(
        QFileInfo(destdir.filePath(QStringLiteral("opt/quorvane/bin/quorvane"))).isExecutable());
    EXPECT_TRUE(QFile::exists(
        destdir.filePath(QStringLiteral("opt/quorvane/share/applications/%1.desktop").arg(appId))));
}

} // namespace
