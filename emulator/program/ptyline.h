#pragma once

#include "program/line.h"

class QSocketNotifier;
class QTimer;

/// A pseudo terminal, with a link to its host side where one is wanted. The link goes away with the object.
class PtyLine : public Line
{
    Q_OBJECT

public:
    /// The link is empty for none.
    explicit PtyLine(const QString& link, QObject* parent = nullptr);
    ~PtyLine() override;

    /// Empty when the line could be set up.
    const QString& error() const { return m_error; }
    QString address() const override;
    void write(const QByteArray& bytes) override;

private:
    bool openPair();
    bool makeLink();
    /// The system tells when a host closes the line.
    void watchClosings();
    void openToAll();
    void read();
    void flush();

    QString m_link;
    QString m_slaveName;
    QString m_error;
    int m_master = -1;
    int m_slave = -1;
    int m_closings = -1;
    bool m_linked = false;
    QByteArray m_waiting;
    QSocketNotifier* m_notifier = nullptr;
    QTimer* m_retry = nullptr;
};
