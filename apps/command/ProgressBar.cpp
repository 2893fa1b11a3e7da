// SPDX-License-Identifier: Apache-2.0
#include "apps/command/ProgressBar.h"

#include "apps/command/Report.h"

#include <corvane/documents/SCLDocControl.h>

#include <QByteArray>

#include <algorithm>
#include <cstdio>
#include <sys/ioctl.h>
#include <unistd.h>

namespace Corvane::Command
{

namespace
{

constexpr qint64 patienceInMs = 150;
constexpr int largestBar = 40;

void Show(const QByteArray& text)
{
    std::fwrite(text.constData(), 1, static_cast<std::size_t>(text.size()), stderr);
    std::fflush(stderr);
}

int Columns()
{
    winsize size = {};
    const bool known = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : 80;
}

QString BarText(const QString& title, int percent)
{
    QString text = QStringLiteral("%1 %2 %").arg(title).arg(percent, 3);
    const int room = Columns() - static_cast<int>(text.size()) - 4;
    const int cells = std::min(room, largestBar);
    if (cells < 5)
        return text;
    const int filled = cells * percent / 100;
    return text + QStringLiteral(" [") + QString(filled, QLatin1Char('#')) +
           QString(cells - filled, QLatin1Char(' ')) + QLatin1Char(']');
}

} // namespace

ProgressBar::ProgressBar(SCLDocControl& control)
{
    if (isatty(STDERR_FILENO) == 0)
        return;
    connect(&control, &SCLDocControl::sigFutaskTaskPrepared, this, &ProgressBar::Begin);
    connect(&m_watcher, &QFutureWatcherBase::progressValueChanged, this, &ProgressBar::Draw);
    connect(&m_watcher, &QFutureWatcherBase::finished, this, &ProgressBar::Erase);
}

ProgressBar::~ProgressBar()
{
    Erase();
}

void ProgressBar::Begin(const QFuture<QString>& future, const QString& title)
{
    Erase();
    m_title = Escaped(title);
    m_sinceBegin.start();
    m_watcher.setFuture(future);
}

void ProgressBar::Draw()
{
    const qint64 length = qint64(m_watcher.progressMaximum()) - m_watcher.progressMinimum();
    const qint64 done = qint64(m_watcher.progressValue()) - m_watcher.progressMinimum();
    if (length <= 0 || m_sinceBegin.elapsed() < patienceInMs)
        return;
    const int percent = static_cast<int>(std::clamp<qint64>(100 * done / length, 0, 100));
    const QString text = BarText(m_title, percent);
    Show('\r' + text.toUtf8());
    m_drawn = static_cast<int>(text.size());
}

void ProgressBar::Erase()
{
    if (m_drawn > 0)
        Show('\r' + QByteArray(m_drawn, ' ') + '\r');
    m_drawn = 0;
}

} // namespace Corvane::Command
