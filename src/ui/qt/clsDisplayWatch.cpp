#include "clsDisplayWatch.h"

#include <QString>
#include <QStringList>
#include <cstdio>
#include <cstdlib>

namespace quillon {

namespace {

// The toolkit's handler of messages is a plain function.
struct Said {
  int nStatus = 0;
  QString sFirst;
  QStringList lines;
};
Said gSaid;

void Take(QtMsgType kind, const QMessageLogContext& context, const QString& sText) {
  if (kind == QtFatalMsg) {
    const QString sReason = gSaid.sFirst.isEmpty() ? sText.section('\n', 0, 0) : gSaid.sFirst;
    std::fputs(("quillon-gui: no window can be opened: " + sReason.simplified() +
                "; for the command line see: quillon --help\n")
                   .toUtf8()
                   .constData(),
               stderr);
    std::_Exit(gSaid.nStatus);
  }
  if (gSaid.sFirst.isEmpty()) gSaid.sFirst = sText;
  gSaid.lines.append(qFormatLogMessage(kind, context, sText));
}

}  // namespace

clsDisplayWatch::clsDisplayWatch(int nStatus) {
  gSaid = {nStatus, {}, {}};
  qInstallMessageHandler(Take);
}

clsDisplayWatch::~clsDisplayWatch() {
  qInstallMessageHandler(nullptr);
  for (const QString& sLine : gSaid.lines) std::fputs((sLine + "\n").toLocal8Bit().constData(), stderr);
  gSaid = {};
}

}  // namespace quillon
