#include "platform/calc/toolbars/Faces.h"

#include <com/sun/star/ui/ImageType.hpp>
#include <com/sun/star/ui/XImageManager.hpp>
#include <com/sun/star/ui/XUIConfigurationManager.hpp>
#include <com/sun/star/ui/theModuleUIConfigurationManagerSupplier.hpp>

#include "platform/calc/UnoText.h"
#include "platform/calc/UnoValue.h"

namespace qva::calc {
namespace {

struct Face {
  std::int32_t id;
  const char* command;
};

// Excel numbers the face of one of its own controls as the control. Of faces without a control here are
// those that the library itself uses, and common ones of which LibreOffice has an icon of the same meaning.
constexpr Face kFaces[] = {
    {3, ".uno:Save"},
    {4, ".uno:Print"},
    {18, ".uno:AddDirect"},
    {19, ".uno:Copy"},
    {21, ".uno:Cut"},
    {22, ".uno:Paste"},
    {23, ".uno:Open"},
    {59, ".uno:SymbolShapes.smiley"},
    {109, ".uno:PrintPreview"},
    {113, ".uno:Bold"},
    {114, ".uno:Italic"},
    {115, ".uno:Underline"},
    {128, ".uno:Undo"},
    {129, ".uno:Redo"},
    {141, ".uno:SearchDialog"},
    {210, ".uno:SortAscending"},
    {211, ".uno:SortDescending"},
    {263, ".uno:ToggleSheetGrid"},  // the way to Excel: its grid
    {443, ".uno:FreezePanes"},
    {984, ".uno:HelpIndex"},
    {1017, ".uno:ArrowShapes.left-arrow"},  // the way back to the application
    {1593, ".uno:InsertAnnotation"},
    {1733, ".uno:Zoom"},
    {2520, ".uno:AddDirect"},
    {2521, ".uno:PrintDefault"},
};

constexpr Face kBuiltInCommands[] = {
    {3, ".uno:Save"},           {4, ".uno:Print"},   {18, ".uno:AddDirect"},   {23, ".uno:Open"},
    {109, ".uno:PrintPreview"}, {1733, ".uno:Zoom"}, {2520, ".uno:AddDirect"}, {2521, ".uno:PrintDefault"},
};

template <std::size_t n>
OUString Find(const Face (&table)[n], std::int32_t id) {
  for (const Face& face : table) {
    if (face.id == id) return OUString::createFromAscii(face.command);
  }
  return {};
}

}  // namespace

IconSizes FaceIcon(std::int32_t face_id) {
  const OUString command = Find(kFaces, face_id);
  if (command.isEmpty()) return {};
  const Reference<css::ui::XUIConfigurationManager> module =
      css::ui::theModuleUIConfigurationManagerSupplier::get(Context())->getUIConfigurationManager(
          "com.sun.star.sheet.SpreadsheetDocument");
  const Reference<css::ui::XImageManager> images(module->getImageManager(), UNO_QUERY_THROW);
  IconSizes icons;
  for (const sal_Int16 size :
       {css::ui::ImageType::SIZE_DEFAULT, css::ui::ImageType::SIZE_LARGE, css::ui::ImageType::SIZE_32}) {
    const auto found = images->getImages(size, SequenceOf({command}));
    if (!found.hasElements() || !found[0].is()) return {};
    icons.push_back(found[0]);
  }
  return icons;
}

OUString BuiltInCommand(std::int32_t control_id) {
  return Find(kBuiltInCommands, control_id);
}

}  // namespace qva::calc
