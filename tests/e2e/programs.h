#pragma once

#include <QJsonDocument>
#include <QJsonObject>
#include <QList>
#include <QProcess>
#include <QTemporaryDir>

/// The software register on a pseudo terminal of its own, from construction to destruction.
class Emulator
{
public:
    explicit Emulator(const QStringList& options = {});
    ~Emulator();

    QString port() const { return m_dir.filePath(QStringLiteral("register")); }
    QString tape() const;
    /// The documents of its journal.
    QList<QJsonObject> journal() const;
    /// The sales among them.
    QList<QJsonObject> sales() const;
    /// Ends it; what it tells of its host.
    QJsonObject stop();

private:
    QTemporaryDir m_dir;
    QProcess m_process;
};

/// What frctl came to.
struct Result
{
    int status = -1;
    QByteArray output;
    QByteArray errors;

    QJsonObject json() const { return QJsonDocument::fromJson(output).object(); }
};

/// Starts frctl with the built plugin and waits until it has ended.
Result runFrctl(const QStringList& arguments);
/// Runs a line of bash.
Result runShell(const QString& script);
/// Starts it, sends the signal once the text has stood in its messages, and waits until it has ended.
Result interruptFrctl(const QStringList& arguments, const QByteArray& after, int signal);
/// The same for a line of bash, which must end with an exec.
Result interruptShell(const QString& script, const QByteArray& after, int signal);
QByteArray readAll(const QString& fileName);
/// A file of the folder with that content; its name.
QString written(const QTemporaryDir& folder, const QString& name, const QByteArray& content);
