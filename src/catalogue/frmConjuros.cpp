#include "catalogue/frmConjuros.h"

#include "catalogue/frmPrinc.h"

using namespace Qt::StringLiterals;

namespace {

const EditorKind& editorKind()
{
    static const EditorKind kind{[]() -> Catalogue& { return frmPrinc().conjuros; },
                                 u"conjuro"_s,
                                 u"Formulario frmConjuros"_s,
                                 u"ini\\pics\\conjuros"_s,
                                 u"imgConjuro"_s,
                                 true,
                                 {{u"tipo"_s, u"txtTipo"_s, true},
                                  {u"nivel"_s, u"txtNivel"_s, true},
                                  {u"magiasalvaje"_s, u"chkMagiaSalvaje"_s, false},
                                  {u"reversible"_s, u"chkReversible"_s, false},
                                  {u"escuela"_s, u"txtEscuela"_s, true},
                                  {u"esfera"_s, u"txtEsfera"_s, true},
                                  {u"alcance"_s, u"txtAlcance"_s, true},
                                  {u"componentes"_s, u"txtComponentes"_s, true},
                                  {u"duracion"_s, u"txtDuracion"_s, true},
                                  {u"tlanzamiento"_s, u"txtTlanzamiento"_s, true},
                                  {u"area"_s, u"txtArea"_s, true},
                                  {u"ts"_s, u"txtTS"_s, true},
                                  {u"origen"_s, u"txtOrigen"_s, true},
                                  {u"materiales"_s, u"txtMateriales"_s, true},
                                  {u"imagen"_s, u"txtImagen"_s, false},
                                  {u"notas"_s, u"txtNotas"_s, false}}};
    return kind;
}

} // namespace

FrmConjuros& frmConjuros()
{
    return platform::FormRegistry::shared<FrmConjuros>();
}

FrmConjuros::FrmConjuros() : ItemEditorForm(editorKind(), conjuroEditado) {}
