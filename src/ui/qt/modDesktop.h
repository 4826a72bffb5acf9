#pragma once

#include <QApplication>

namespace quillon {

/// The toolkit's application. A failure that nobody handles, thrown by an event's handler, ends the program: the
/// toolkit itself lets no exception pass.
class clsApplication : public QApplication {
 public:
  using QApplication::QApplication;
  bool notify(QObject* pReceiver, QEvent* pEvent) override;
};

/// Starts the desktop program under an application that is there already, and stays until its window closes. Returns
/// the exit status: 0, or 70 after a failure that nobody handles, which is shown and told on standard error.
int RunDesktop(int nArguments, char** pArguments);

}  // namespace quillon
