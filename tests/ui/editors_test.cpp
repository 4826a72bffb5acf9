#include "clsDesktopFixture.h"
#include "frmExportBuilder.h"

namespace quillon {
namespace {

class RecipeEditor : public clsDesktopFixture {
 protected:
  void SetUp() override {
    clsDesktopFixture::SetUp();
    Load();
  }
  void AddFields(std::initializer_list<std::pair<const char*, bool>> fields) {
    screen_.onModal = [this, fields](clsForm& builder) {
      for (const auto& [pWidth, bMulti] : fields) {
        screen_.onModal = [pWidth = pWidth, bMulti = bMulti](clsForm& dialog) {
          dialog.TypeText("txtFieldWidth", pWidth);
          if (bMulti) dialog.Click("Option1");
          dialog.Click("cmdOK");
        };
        builder.Click("cmdAddColumn");
      }
      builder.Click("cmdOK");
    };
    editor_.Click("cmdAddTable");
  }
  std::string Parsing() {
    const std::string& s = editor_.Get("txtFileEditor").sText;
    const size_t n = s.rfind("Parsing=");
    return s.substr(n, s.find("\r\n", n) - n);
  }
  frmExportBuilder editor_{form_};
};

TEST_F(RecipeEditor, WritesTableSectionsInTheirTextForm) {
  editor_.Form_Load();
  EXPECT_FALSE(editor_.bDirty);
  AddFields({{"5", false}, {"3", false}});
  EXPECT_EQ(editor_.Get("txtFileEditor").sText,
            "[Header]\r\nProduct=QLN-B\r\nFileType=RECIPE\r\nFileFormat=1.0\r\n\r\n[Table 1]\r\n"
            "ReadStartLine=KEY TEXT AT TOP\r\nReadStartLineOffset=0\r\nReadEndLine=KEY TEXT AT BOTTOM\r\n"
            "ReadEndLineOffset=0\r\nParsing=---- ---\r\nWriteColumn=A\r\n");
  EXPECT_EQ(editor_.sCaption, "Recipe Editor - Tables = 1");
  EXPECT_TRUE(editor_.bDirty);
  AddFields({});
  EXPECT_EQ(Parsing(), "Parsing=-");
  AddFields({{"1", false}});
  EXPECT_EQ(Parsing(), "Parsing=-");
  AddFields({{"4", true}, {"1", false}, {"2", false}});
  EXPECT_EQ(Parsing(), "Parsing====  --");
  EXPECT_EQ(editor_.TableCounter, 4);
}

TEST_F(RecipeEditor, ChecksEachFieldOnLeavingIt) {
  editor_.Form_Load();
  screen_.onModal = [&](clsForm& builder) {
    struct Case {
      const char *pControl, *pText, *pMessage, *pRestored;
    };
    for (const Case& c : {Case{"txtReadStartLine", " ", "Top Key Text should not be a blank!", "KEY TEXT AT TOP"},
                          Case{"txtReadEndLine", "", "Bottom Key Text should not be a blank!", "KEY TEXT AT BOTTOM"},
                          Case{"txtReadStartLineOffset", "x", "Top Line offset must be a number", "0"},
                          Case{"txtReadEndLineOffset", "", "Bottom Line offset must be a number", "0"},
                          Case{"txtTableNumber", "0", "Table Number must be a number larger than 0", "1"}}) {
      builder.TypeText(c.pControl, c.pText);
      builder.LoseFocus(c.pControl);
      EXPECT_EQ(host_.messages.back().sText, c.pMessage);
      EXPECT_EQ(builder.Get(c.pControl).sText, c.pRestored);
    }
    EXPECT_EQ(builder.Get("frameTop").sCaption, "Top Boundry");
    builder.Click("cmdCancel");
  };
  editor_.Click("cmdAddTable");
  EXPECT_EQ(editor_.TableCounter, 0);
}

TEST_F(RecipeEditor, LoadsSavesAndAsks) {
  const std::string sFile = folder_.Write("r.rcp", "[Header]\r\n[Table 1]\r\n[Table 1 Col 1]\r\n[Table 2]\r\nx=\xE9");
  editor_.Form_Load();
  editor_.LoadRecipeIntoEditor(sFile);
  EXPECT_EQ(editor_.TableCounter, 2);
  EXPECT_EQ(editor_.Get("txtFileEditor").sText, "[Header]\r\n[Table 1]\r\n[Table 1 Col 1]\r\n[Table 2]\r\nx=é\r\n");
  EXPECT_FALSE(editor_.bDirty);
  editor_.TypeText("txtFileEditor", "changed é\r\n");
  host_.answer = MessageAnswer::No;
  screen_.files = {folder_.Write("other.rcp", "keep")};
  editor_.Click("cmdSaveAs");
  EXPECT_EQ(folder_.Read("other.rcp"), "keep");
  EXPECT_EQ(editor_.sLastRecipeFileName, folder_.Path("other.rcp"));
  host_.answer = MessageAnswer::Yes;
  editor_.TypeText("txtFileEditor", "again é\r\n");
  editor_.CloseRequested();
  EXPECT_EQ(host_.messages.back().sText, "You've edited the file, do you want to save your changes?");
  EXPECT_EQ(folder_.Read("other.rcp"), "again \xE9\r\n");
  EXPECT_TRUE(editor_.IsUnloaded());
}

TEST_F(RecipeEditor, ACancelledOpenKeepsTheTextAndLosesTheName) {
  editor_.Form_Load();
  editor_.LoadRecipeIntoEditor(folder_.Write("r.rcp", "[Table 1]\r\n"));
  editor_.Click("cmdLoadFile");
  EXPECT_EQ(editor_.sLastRecipeFileName, "");
  gConversionOptions.sRecipeFile = "job.rcp";
  editor_.Click("cmdLoadFile");
  EXPECT_EQ(screen_.lastQuestion.sFileName, "job.rcp") << "the dialog proposes the job's recipe then";
  EXPECT_EQ(editor_.Get("txtFileEditor").sText, "[Table 1]\r\n");
  const size_t nMessages = host_.messages.size();
  editor_.Click("cmdSave");
  EXPECT_EQ(host_.messages.size(), nMessages + 1);
}

}  // namespace
}  // namespace quillon
