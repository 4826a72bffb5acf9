#include "modDesktop.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QLibraryInfo>
#include <QTranslator>
#include <QVBoxLayout>
#include <iostream>
#include <map>
#include <memory>
#include <new>
#include <optional>

#include "MainModule.h"
#include "clsAppearance.h"
#include "clsMainWindow.h"
#include "clsQtHost.h"
#include "clsQtScreen.h"
#include "frmLanguage.h"
#include "frmMain.h"
#include "frmMainMDI.h"
#include "frmTextDisplay.h"
#include "modFailure.h"
#include "modFiles.h"
#include "modIcons.h"
#include "modParseCommandLine.h"
#include "modPaths.h"
#include "modRunMessages.h"
#include "modSettings.h"
#include "modTranslator.h"
#include "modVersion.h"

namespace quillon {

namespace {

constexpr int kUnexpected = 70;

/// All that lives as long as the desktop program.
struct Desktop {
  clsQtHost host;
  clsQtScreen screen{host};
  clsRunFields fields;
  clsRunLog log{host, gConversionOptions};
  frmMainMDI frame;
  std::unique_ptr<frmMain> pForm;
  std::unique_ptr<clsMainWindow> pWindow;
  std::optional<clsAppearance> appearance;
  QTranslator toolkitTexts;

  void TranslateToolkit();
  void StartMainWindow(const std::string& sJobFile);
  void ShowBanner(QWidget& banner);
};

/// The start-up banner, shown without blocking.
void Desktop::ShowBanner(QWidget& banner) {
  frmPleaseWait form;
  form.Form_Load(screen);
  form.ShowStart();
  auto* const pColumn = new QVBoxLayout(&banner);
  constexpr int kMargin = 40;
  constexpr int kPicture = 64;
  constexpr int kHeaderPoints = 16;
  pColumn->setContentsMargins(2 * kMargin, kMargin, 2 * kMargin, kMargin);
  auto* const pPicture = new QLabel;
  pPicture->setPixmap(QApplication::windowIcon().pixmap(kPicture));
  pPicture->setAlignment(Qt::AlignCenter);
  pColumn->addWidget(pPicture);
  for (const char* const pName : {"lblHeader", "lblLine1", "lblLine2"}) {
    auto* const pLabel = new QLabel(ToQt(form.Get(pName).sCaption));
    pLabel->setAlignment(Qt::AlignCenter);
    if (pColumn->count() == 1) pLabel->setFont(QFont(pLabel->font().family(), kHeaderPoints, QFont::Bold));
    pColumn->addWidget(pLabel);
  }
  banner.setWindowFlags(Qt::SplashScreen);
  banner.setWindowTitle(ToQt(form.Get("lblHeader").sCaption));
  banner.setObjectName("frmPleaseWait");
  banner.setAttribute(Qt::WA_StyledBackground);
  banner.setStyleSheet("#frmPleaseWait { border: 1px solid palette(mid) }");
  banner.show();
  QApplication::processEvents();
}

/// The toolkit's own texts (file dialogs) in the language of ours, where Debian's package of them is installed.
void Desktop::TranslateToolkit() {
  static const std::map<std::string, QString> codes{
      {"German", "de"}, {"French", "fr"}, {"Spanish", "es"}, {"Japanese", "ja"}};
  const auto code = codes.find(gsLanguage);
  if (code == codes.end()) return;
  if (toolkitTexts.load("qtbase_" + code->second, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QApplication::installTranslator(&toolkitTexts);
  }
}

void Desktop::StartMainWindow(const std::string& sJobFile) {
  appearance.emplace(GetPrivateProfileString(gsSettingsFile, "General", "sColours", "auto"));
  TranslateToolkit();
  QWidget banner;
  ShowBanner(banner);
  // The window is made behind the banner, within the time for which that stands alone.
  constexpr qint64 kAlone = 200;
  QElapsedTimer sinceBanner;
  sinceBanner.start();
  frame.MDIForm_Load(screen);
  frame.ReadIniFile();
  pForm = std::make_unique<frmMain>(host, screen, gConversionOptions, log, fields);
  pWindow = std::make_unique<clsMainWindow>(host, frame, *pForm, log);
  screen.SetMainWindow(pWindow.get());
  pWindow->ApplyPlacement();
  if (sinceBanner.elapsed() < kAlone) host.Wait(static_cast<int>(kAlone - sinceBanner.elapsed()));
  // The guide of a first start is modal; the window must stand behind it by then.
  pForm->onMaximise = [this] {
    if (frame.placement.lWindowState == 2) pWindow->setWindowState(Qt::WindowMaximized);
    pWindow->ShowAll();
    pWindow->show();
  };
  pForm->Form_Load(frame.bFirstTimeUser);
  if (FileExists(sJobFile)) pForm->ConversionJobOpen(sJobFile);
  pWindow->ShowAll();
  pWindow->show();
  host.Wait(250);
  banner.hide();
}

Desktop* gpDesktop = nullptr;

int Failed(Desktop& desktop, const char* pText) {
  std::cerr << "quillon-gui: " << pText << '\n';
  desktop.host.ShowMessage(pText, "Quillon", MessageIcon::Critical, MessageButtons::Ok);
  // A changed job is offered to be saved before all is lost.
  if (desktop.pForm) desktop.pForm->CheckToSaveFileBeforeErasing();
  return kUnexpected;
}

std::string CommandText(int nArguments, char** pArguments) {
  std::string sText;
  for (int i = 1; i < nArguments; ++i) sText += (i > 1 ? " " : "") + std::string(pArguments[i]);
  return sText;
}

/// A file given as the one argument, as a desktop does that opens it with this program.
bool IsFileArgument(int nArguments, char** pArguments) {
  return nArguments == 2 && IsFile(pArguments[1]);
}

}  // namespace

bool clsApplication::notify(QObject* pReceiver, QEvent* pEvent) {
  try {
    return QApplication::notify(pReceiver, pEvent);
  } catch (const std::bad_alloc&) {
    if (gpDesktop != nullptr) exit(Failed(*gpDesktop, kNoMemoryText));
    return false;
  } catch (const std::exception& failure) {
    if (gpDesktop != nullptr) exit(Failed(*gpDesktop, failure.what()));
    return false;
  }
}

int RunDesktop(int nArguments, char** pArguments) {
  Desktop desktop;
  gpDesktop = &desktop;
  desktop.host.SetLog(&desktop.log);
  QApplication::setApplicationName("Quillon");
  QApplication::setApplicationVersion(ToQt(VersionText));
  QApplication::setWindowIcon(MakeIcon(Icon::Application, QApplication::palette()));
  const bool bFile = IsFileArgument(nArguments, pArguments);
  const std::string sText = bFile ? std::string() : CommandText(nArguments, pArguments);
  StartHooks hooks;
  // A first start that is a script's has nobody who could choose.
  if (!RunsUnattended(sText)) hooks.chooseLanguage = [&] { ChooseLanguage(desktop.host, desktop.screen, false); };
  hooks.StartMainWindow = [&](const std::string& sJobFile) {
    desktop.StartMainWindow(sJobFile);
    if (bFile) desktop.pWindow->TakeFile(ToQt(HostPath(AbsolutePath(pArguments[1]))));
  };
  try {
    const StartOutcome outcome = Main(sText, desktop.host, desktop.log, desktop.fields, hooks);
    return outcome == StartOutcome::StartedWindow ? QApplication::exec() : 0;
  } catch (const std::bad_alloc&) {
    return Failed(desktop, kNoMemoryText);
  } catch (const std::exception& failure) {
    return Failed(desktop, failure.what());
  }
}

}  // namespace quillon
