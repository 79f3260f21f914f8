#include "catalogue/frmArmas.h"

#include "catalogue/frmPrinc.h"

using namespace Qt::StringLiterals;

namespace {

const EditorKind& editorKind()
{
    static const EditorKind kind{[]() -> Catalogue& { return frmPrinc().armas; },
                                 u"arma"_s,
                                 u"Formulario frmArmas"_s,
                                 u"ini\\pics\\armas"_s,
                                 u"imgArma"_s,
                                 true,
                                 {{u"dp"_s, u"txtDP"_s, true},
                                  {u"dm"_s, u"txtDM"_s, true},
                                  {u"critico"_s, u"txtCritico"_s, true},
                                  {u"categoria"_s, u"txtCategoria"_s, true},
                                  {u"tipo"_s, u"txtTipo"_s, true},
                                  {u"precio"_s, u"txtPrecio"_s, true},
                                  {u"peso"_s, u"txtPeso"_s, true},
                                  {u"imagen"_s, u"txtImagen"_s, false},
                                  {u"notas"_s, u"txtNotas"_s, false}}};
    return kind;
}

} // namespace

FrmArmas& frmArmas()
{
    return platform::FormRegistry::shared<FrmArmas>();
}

FrmArmas::FrmArmas() : ItemEditorForm(editorKind(), armaEditada) {}
