#pragma once

#include "hostcommand.h"
#include "hostprocess.h"
#include "processplan.h"
#include "random.h"
#include "register/storeddocument.h"
#include "registerprocess.h"

#include <QList>
#include <QMap>
#include <QTemporaryDir>

/// Sales over real programs whose register loses its power again and again: it is killed in the middle of its
/// work, and what its state has afterwards is compared with what its hosts were told.
class PowerCuts
{
public:
    explicit PowerCuts(const ProcessPlan& plan);
    /// False after a violation, which is printed.
    bool run();

private:
    struct Counts
    {
        int insideDocument = 0;
        /// Sales that the fiscal drive had before their host was told.
        int untold = 0;
        QMap<int, int> statuses;
    };

    void cut(int number);
    QStringList drawCommand(int number);
    /// The state as it is on disk agrees with itself, with what it was and with what was told. Tells whether
    /// a document is open.
    bool checkState();
    void checkVerdict(int number, const HostAnswer& told) const;
    /// The host asks until it knows what has become of the sale, and sells what was not sold.
    void settle(int number, const QStringList& command);
    /// How often the sale is among the documents.
    qsizetype receiptsOf(int number) const;
    void print() const;

    ProcessPlan m_plan;
    QTemporaryDir m_folder;
    Random m_random;
    RegisterProcess m_register;
    HostCommand m_host;
    QString m_protocol;
    /// All documents as they were when the state was checked last, in the order of their numbers.
    QList<emulator::StoredDocument> m_documents;
    Counts m_counts;
};
