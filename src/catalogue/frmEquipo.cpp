#include "catalogue/frmEquipo.h"

#include "catalogue/frmPrinc.h"

using namespace Qt::StringLiterals;

namespace {

const EditorKind& editorKind()
{
    static const EditorKind kind{[]() -> Catalogue& { return frmPrinc().equipo; },
                                 u"equipo"_s,
                                 u"Formulario frmEquipos"_s,
                                 u"ini\\pics\\equipo"_s,
                                 u"imgEquipo"_s,
                                 false,
                                 {{u"magico"_s, u"chkMagico"_s, false},
                                  {u"precio"_s, u"txtPrecio"_s, true},
                                  {u"peso"_s, u"txtPeso"_s, true},
                                  {u"imagen"_s, u"txtImagen"_s, false},
                                  {u"notas"_s, u"txtNotas"_s, false}}};
    return kind;
}

} // namespace

FrmEquipo& frmEquipo()
{
    return platform::FormRegistry::shared<FrmEquipo>();
}

FrmEquipo::FrmEquipo() : ItemEditorForm(editorKind(), equipoEditado) {}
