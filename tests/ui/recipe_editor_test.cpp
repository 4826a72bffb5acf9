// What the recipe editor and its two dialogs do beside the text that they write.

#include "clsDesktopFixture.h"
#include "frmExportBuilder.h"

namespace quillon {
namespace {

class RecipeForms : public clsDesktopFixture {
 protected:
  void SetUp() override {
    clsDesktopFixture::SetUp();
    Load();
  }
  const std::string& EditorText() { return editor_.Get("txtFileEditor").sText; }
  /// Opens the Table Builder and plays its user.
  void Build(const std::function<void(clsForm&)>& play) {
    screen_.onModal = play;
    editor_.Click("cmdAddTable");
  }
  /// Opens the dialog for a field and plays its user.
  void AddField(clsForm& builder, const std::function<void(clsForm&)>& play) {
    screen_.onModal = play;
    builder.Click("cmdAddColumn");
  }
  frmExportBuilder editor_{form_};
};

TEST_F(RecipeForms, NewReplacesTheTextAlone) {
  editor_.Form_Load();
  editor_.LoadRecipeIntoEditor(folder_.Write("r.rcp", "[Table 1]\r\n[Table 2]\r\n"));
  editor_.Click("cmdNew");
  EXPECT_EQ(EditorText(), "[Header]\r\nProduct=QLN-B\r\nFileType=RECIPE\r\nFileFormat=1.0\r\n");
  EXPECT_EQ(editor_.TableCounter, 2);
  EXPECT_EQ(editor_.sLastRecipeFileName, folder_.Path("r.rcp"));
  EXPECT_EQ(editor_.sCaption, "Recipe Editor - Tables = 2");
  const clsControl& text = editor_.Get("txtFileEditor");
  EXPECT_EQ(text.lSelStart, static_cast<int64_t>(EditorText().size()) - 1) << "the last character is selected";
  EXPECT_EQ(text.lSelLength, 1);
}

TEST_F(RecipeForms, TextAndCountLiveOnBetweenTwoOpenings) {
  const auto play = [&](std::string_view sExpected, int32_t lTables) {
    screen_.onModal = [=](clsForm& form) {
      EXPECT_EQ(form.Get("txtFileEditor").sText, sExpected);
      EXPECT_EQ(form.sCaption, "Recipe Editor - Tables = " + std::to_string(lTables));
      form.Click("cmdCancel");
    };
    form_.Click("cmdEditRecipe");
  };
  form_.Get("cbRecipeFile").sText = folder_.Write("r.rcp", "[Table 1]\r\nx=1");
  play("[Table 1]\r\nx=1\r\n", 1);
  form_.Get("cbRecipeFile").sText = folder_.Path("missing.rcp");
  play("[Table 1]\r\nx=1", 1);
  EXPECT_EQ(Text("cbRecipeFile"), folder_.Path("missing.rcp"));
  form_.Get("cbRecipeFile").sText = folder_.Write("none.rcp", "no table");
  play("no table\r\n", 0);
  form_.Get("cbRecipeFile").sText.clear();
  play("[Header]\r\nProduct=QLN-B\r\nFileType=RECIPE\r\nFileFormat=1.0\r\n", 0);
}

TEST_F(RecipeForms, ACancelledSaveAsChangesNothingAndAChosenNameStays) {
  editor_.Form_Load();
  editor_.LoadRecipeIntoEditor(folder_.Write("r.rcp", "a"));
  editor_.TypeText("txtFileEditor", "b");
  editor_.Click("cmdSaveAs");
  EXPECT_TRUE(editor_.bDirty);
  EXPECT_EQ(editor_.sLastRecipeFileName, folder_.Path("r.rcp"));
  screen_.files = {folder_.Path("new.rcp")};
  editor_.Click("cmdSaveAs");
  EXPECT_EQ(folder_.Read("new.rcp"), "b");
  EXPECT_EQ(editor_.Get("StatusBar1", 1).sText, folder_.Path("new.rcp"));
  EXPECT_FALSE(editor_.bDirty);
  host_.answer = MessageAnswer::No;
  editor_.TypeText("txtFileEditor", "c");
  screen_.files = {folder_.Path("r.rcp")};
  editor_.Click("cmdSaveAs");
  EXPECT_EQ(host_.messages.back().sText, "Overwrite existing file: " + folder_.Path("r.rcp"));
  EXPECT_EQ(editor_.Get("StatusBar1", 1).sText, folder_.Path("new.rcp")) << "shown only once it is written";
  EXPECT_FALSE(editor_.bDirty);
  editor_.TypeText("txtFileEditor", "d");
  screen_.files = {folder_.Path("no folder/r.rcp")};
  editor_.Click("cmdSaveAs");
  EXPECT_TRUE(editor_.bDirty) << "what could not be written is asked about";
}

TEST_F(RecipeForms, CloseAsksAboutAChangedTextAndCancelDoesNot) {
  struct Case {
    std::function<void(frmExportBuilder&)> leave;
    size_t nQuestions;
  };
  host_.answer = MessageAnswer::No;
  for (const Case& c : {Case{[](frmExportBuilder& form) { form.Click("cmdClose"); }, 1},
                        Case{[](frmExportBuilder& form) { form.KeyReleased(11); }, 1},
                        Case{[](frmExportBuilder& form) { form.Click("cmdCancel"); }, 0}}) {
    frmExportBuilder editor(form_);
    editor.Form_Load();
    editor.LoadRecipeIntoEditor(folder_.Write("r.rcp", "old"));
    editor.TypeText("txtFileEditor", "new");
    editor.KeyReleased(12);
    EXPECT_FALSE(editor.IsUnloaded());
    host_.messages.clear();
    c.leave(editor);
    EXPECT_TRUE(editor.IsUnloaded());
    EXPECT_EQ(host_.messages.size(), c.nQuestions);
    EXPECT_EQ(folder_.Read("r.rcp"), "old");
  }
}

TEST_F(RecipeForms, TheTableBuilderKeepsHandEditsAndTakesTheNumber) {
  editor_.Form_Load();
  editor_.TypeText("txtFileEditor", "; mine\r\n");
  Build([](clsForm& builder) {
    EXPECT_EQ(builder.sCaption, "Add Table 1");
    EXPECT_EQ(builder.Get("txtTableNumber").sText, "1");
    builder.TypeText("txtTableNumber", " 7 ");
    builder.LoseFocus("txtTableNumber");
    EXPECT_EQ(builder.sCaption, "Add Table  7 ");
    builder.TypeText("txtReadStartLine", " TOP ");
    builder.TypeText("txtReadStartLineOffset", "-2");
    builder.LoseFocus("txtReadStartLineOffset");
    builder.Click("cmdOK");
  });
  EXPECT_EQ(EditorText(),
            "; mine\r\n\r\n[Table 7]\r\nReadStartLine=TOP\r\nReadStartLineOffset=-2\r\n"
            "ReadEndLine=KEY TEXT AT BOTTOM\r\nReadEndLineOffset=0\r\nParsing=-\r\nWriteColumn=A\r\n");
  EXPECT_EQ(editor_.TableCounter, 7);
  const std::string sBefore = EditorText();
  Build([](clsForm& builder) {
    EXPECT_EQ(builder.sCaption, "Add Table 8");
    builder.Click("cmdCancel");
  });
  EXPECT_EQ(EditorText(), sBefore);
  EXPECT_EQ(editor_.sCaption, "Recipe Editor - Tables = 7");
}

TEST_F(RecipeForms, AFieldTakesTheLeadingNumberOfItsWidth) {
  editor_.Form_Load();
  Build([&](clsForm& builder) {
    AddField(builder, [](clsForm& dialog) {
      EXPECT_EQ(dialog.sCaption, "Add Column Field 1");
      EXPECT_EQ(dialog.Get("txtFieldWidth").sText, "10");
      EXPECT_TRUE(dialog.Get("obSingleDataField").bChecked);
      for (const char* const pNone : {"0", "-4", "x", "0.4"}) {
        dialog.TypeText("txtFieldWidth", pNone);
        dialog.Click("cmdOK");
        EXPECT_FALSE(dialog.IsUnloaded()) << pNone;
      }
      dialog.TypeText("txtFieldWidth", "4.6 wide");
      dialog.Click("cmdOK");
      EXPECT_TRUE(dialog.IsUnloaded());
    });
    EXPECT_EQ(builder.Get("lblFields").sCaption, "1");
    AddField(builder, [](clsForm& dialog) { dialog.Click("cmdCancel"); });
    AddField(builder, [](clsForm& dialog) {
      dialog.Click("Option1");
      EXPECT_FALSE(dialog.Get("obSingleDataField").bChecked);
      dialog.TypeText("txtFieldWidth", "3");
      dialog.Click("cmdOK");
    });
    AddField(builder, [](clsForm& dialog) { EXPECT_EQ(dialog.sCaption, "Add Column Field 3"); });
    builder.Click("cmdOK");
  });
  EXPECT_NE(EditorText().find("Parsing=---- ===\r\n"), std::string::npos);
}

}  // namespace
}  // namespace quillon
