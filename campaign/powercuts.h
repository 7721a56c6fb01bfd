#pragma once

#include "random.h"
#include "register/storeddocument.h"
#include "registerprocess.h"

#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QProcess>
#include <QTemporaryDir>

#include <optional>

/// Sales over real programs whose register loses its power again and again: it is killed in the middle of its
/// work, and what its state has afterwards is compared with what its hosts were told.
class PowerCuts
{
public:
    struct Plan
    {
        int cuts = 500;
        quint64 seed = 1;
        QString emulator;
        QString frctl;
        QString plugin;
    };

    explicit PowerCuts(const Plan& plan);
    /// False after a violation, which is printed.
    bool run();

private:
    /// What frctl came to.
    struct Told
    {
        int status = -1;
        QJsonObject answer;
    };
    struct Counts
    {
        int insideDocument = 0;
        /// Sales that the fiscal drive had before their host was told.
        int untold = 0;
        QMap<int, int> statuses;
    };

    void cut(int number);
    void startHost(QProcess& host, const QStringList& command) const;
    static Told end(QProcess& host);
    QStringList drawCommand(int number);
    QStringList hostArguments(const QStringList& command) const;
    void writeReceipt(int number) const;
    /// Lines of the trace that come before the moment of the cut; none for the closing of the document.
    std::optional<int> drawMoment();
    bool isMoment(const std::optional<int>& moment);
    /// Lets the host work until the moment of the cut.
    void waitForMoment(QProcess& host);
    /// The state as it is on disk agrees with itself, with what it was and with what was told. Tells whether
    /// a document is open.
    bool checkState();
    void checkVerdict(int number, const Told& told) const;
    /// The host asks until it knows what has become of the sale, and sells what was not sold.
    void settle(int number, const QStringList& command);
    /// How often the sale is among the documents.
    qsizetype receiptsOf(int number) const;
    void print() const;

    Plan m_plan;
    QTemporaryDir m_folder;
    Random m_random;
    RegisterProcess m_register;
    QString m_protocol;
    /// All documents as they were when the state was checked last, in the order of their numbers.
    QList<emulator::StoredDocument> m_documents;
    Counts m_counts;
};
