// The functions of libgsf, and of the libraries below it, that are used, each handed on to the library.

#include "modLateGsf.h"

#include <glib-object.h>
#include <gsf/gsf-infile-msole.h>
#include <gsf/gsf-infile.h>
#include <gsf/gsf-input-memory.h>
#include <gsf/gsf-input.h>
#include <gsf/gsf-outfile-msole.h>
#include <gsf/gsf-outfile.h>
#include <gsf/gsf-output-memory.h>
#include <gsf/gsf-output.h>
#include <gsf/gsf-utils.h>

#include "clsLateLibrary.h"

namespace {

quillon::clsLateLibrary& Library() {
  static quillon::clsLateLibrary library(QUILLON_LIBGSF);
  return library;
}

}  // namespace

extern "C" {

void g_clear_error(GError** pError) {
  static auto* const pCall = Library().Find<decltype(g_clear_error)>("g_clear_error");
  pCall(pError);
}
guint g_log_set_handler(const gchar* pDomain, GLogLevelFlags levels, GLogFunc pTake, gpointer pData) {
  static auto* const pCall = Library().Find<decltype(g_log_set_handler)>("g_log_set_handler");
  return pCall(pDomain, levels, pTake, pData);
}
void g_object_unref(gpointer pObject) {
  static auto* const pCall = Library().Find<decltype(g_object_unref)>("g_object_unref");
  pCall(pObject);
}
GTypeInstance* g_type_check_instance_cast(GTypeInstance* pInstance, GType type) {
  static auto* const pCall = Library().Find<decltype(g_type_check_instance_cast)>("g_type_check_instance_cast");
  return pCall(pInstance, type);
}
gboolean g_type_check_instance_is_a(GTypeInstance* pInstance, GType type) {
  static auto* const pCall = Library().Find<decltype(g_type_check_instance_is_a)>("g_type_check_instance_is_a");
  return pCall(pInstance, type);
}
void gsf_init() {
  static auto* const pCall = Library().Find<decltype(gsf_init)>("gsf_init");
  pCall();
}
GType gsf_input_get_type() {
  static auto* const pCall = Library().Find<decltype(gsf_input_get_type)>("gsf_input_get_type");
  return pCall();
}
GType gsf_infile_get_type() {
  static auto* const pCall = Library().Find<decltype(gsf_infile_get_type)>("gsf_infile_get_type");
  return pCall();
}
GType gsf_infile_msole_get_type() {
  static auto* const pCall = Library().Find<decltype(gsf_infile_msole_get_type)>("gsf_infile_msole_get_type");
  return pCall();
}
GType gsf_output_get_type() {
  static auto* const pCall = Library().Find<decltype(gsf_output_get_type)>("gsf_output_get_type");
  return pCall();
}
GType gsf_output_memory_get_type() {
  static auto* const pCall = Library().Find<decltype(gsf_output_memory_get_type)>("gsf_output_memory_get_type");
  return pCall();
}
GType gsf_outfile_get_type() {
  static auto* const pCall = Library().Find<decltype(gsf_outfile_get_type)>("gsf_outfile_get_type");
  return pCall();
}
GType gsf_outfile_msole_get_type() {
  static auto* const pCall = Library().Find<decltype(gsf_outfile_msole_get_type)>("gsf_outfile_msole_get_type");
  return pCall();
}
GsfInput* gsf_input_memory_new(guint8 const* pBytes, gsf_off_t nBytes, gboolean bFree) {
  static auto* const pCall = Library().Find<decltype(gsf_input_memory_new)>("gsf_input_memory_new");
  return pCall(pBytes, nBytes, bFree);
}
gboolean gsf_input_copy(GsfInput* pFrom, GsfOutput* pTo) {
  static auto* const pCall = Library().Find<decltype(gsf_input_copy)>("gsf_input_copy");
  return pCall(pFrom, pTo);
}
GDateTime* gsf_input_get_modtime(GsfInput* pInput) {
  static auto* const pCall = Library().Find<decltype(gsf_input_get_modtime)>("gsf_input_get_modtime");
  return pCall(pInput);
}
guint8 const* gsf_input_read(GsfInput* pInput, size_t nBytes, guint8* pBuffer) {
  static auto* const pCall = Library().Find<decltype(gsf_input_read)>("gsf_input_read");
  return pCall(pInput, nBytes, pBuffer);
}
gsf_off_t gsf_input_size(GsfInput* pInput) {
  static auto* const pCall = Library().Find<decltype(gsf_input_size)>("gsf_input_size");
  return pCall(pInput);
}
GsfInfile* gsf_infile_msole_new(GsfInput* pSource, GError** pError) {
  static auto* const pCall = Library().Find<decltype(gsf_infile_msole_new)>("gsf_infile_msole_new");
  return pCall(pSource, pError);
}
gboolean gsf_infile_msole_get_class_id(GsfInfileMSOle const* pFile, guint8* pId) {
  static auto* const pCall = Library().Find<decltype(gsf_infile_msole_get_class_id)>("gsf_infile_msole_get_class_id");
  return pCall(pFile, pId);
}
int gsf_infile_num_children(GsfInfile* pFile) {
  static auto* const pCall = Library().Find<decltype(gsf_infile_num_children)>("gsf_infile_num_children");
  return pCall(pFile);
}
char const* gsf_infile_name_by_index(GsfInfile* pFile, int nChild) {
  static auto* const pCall = Library().Find<decltype(gsf_infile_name_by_index)>("gsf_infile_name_by_index");
  return pCall(pFile, nChild);
}
GsfInput* gsf_infile_child_by_index(GsfInfile* pFile, int nChild) {
  static auto* const pCall = Library().Find<decltype(gsf_infile_child_by_index)>("gsf_infile_child_by_index");
  return pCall(pFile, nChild);
}
GsfInput* gsf_infile_child_by_name(GsfInfile* pFile, char const* pName) {
  static auto* const pCall = Library().Find<decltype(gsf_infile_child_by_name)>("gsf_infile_child_by_name");
  return pCall(pFile, pName);
}
GsfOutput* gsf_output_memory_new() {
  static auto* const pCall = Library().Find<decltype(gsf_output_memory_new)>("gsf_output_memory_new");
  return pCall();
}
const guint8* gsf_output_memory_get_bytes(GsfOutputMemory* pOutput) {
  static auto* const pCall = Library().Find<decltype(gsf_output_memory_get_bytes)>("gsf_output_memory_get_bytes");
  return pCall(pOutput);
}
gboolean gsf_output_write(GsfOutput* pOutput, size_t nBytes, guint8 const* pBytes) {
  static auto* const pCall = Library().Find<decltype(gsf_output_write)>("gsf_output_write");
  return pCall(pOutput, nBytes, pBytes);
}
gsf_off_t gsf_output_size(GsfOutput* pOutput) {
  static auto* const pCall = Library().Find<decltype(gsf_output_size)>("gsf_output_size");
  return pCall(pOutput);
}
gboolean gsf_output_set_modtime(GsfOutput* pOutput, GDateTime* pTime) {
  static auto* const pCall = Library().Find<decltype(gsf_output_set_modtime)>("gsf_output_set_modtime");
  return pCall(pOutput, pTime);
}
gboolean gsf_output_close(GsfOutput* pOutput) {
  static auto* const pCall = Library().Find<decltype(gsf_output_close)>("gsf_output_close");
  return pCall(pOutput);
}
GsfOutfile* gsf_outfile_msole_new(GsfOutput* pSink) {
  static auto* const pCall = Library().Find<decltype(gsf_outfile_msole_new)>("gsf_outfile_msole_new");
  return pCall(pSink);
}
gboolean gsf_outfile_msole_set_class_id(GsfOutfileMSOle* pFile, guint8 const* pId) {
  static auto* const pCall = Library().Find<decltype(gsf_outfile_msole_set_class_id)>("gsf_outfile_msole_set_class_id");
  return pCall(pFile, pId);
}
GsfOutput* gsf_outfile_new_child(GsfOutfile* pFile, char const* pName, gboolean bFolder) {
  static auto* const pCall = Library().Find<decltype(gsf_outfile_new_child)>("gsf_outfile_new_child");
  return pCall(pFile, pName, bFolder);
}

}  // extern "C"

namespace quillon {

std::string GsfVersion() {
  const auto number = [](const char* pName) { return std::to_string(*Library().Find<const int>(pName)); };
  return number("libgsf_major_version") + "." + number("libgsf_minor_version") + "." + number("libgsf_micro_version");
}

}  // namespace quillon
