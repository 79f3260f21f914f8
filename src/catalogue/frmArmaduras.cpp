#include "catalogue/frmArmaduras.h"

#include "catalogue/frmPrinc.h"

using namespace Qt::StringLiterals;

namespace {

const EditorKind& editorKind()
{
    static const EditorKind kind{[]() -> Catalogue& { return frmPrinc().armaduras; },
                                 u"armadura"_s,
                                 u"Formulario frmArmaduras"_s,
                                 u"ini\\pics\\armaduras"_s,
                                 u"imgArmadura"_s,
                                 true,
                                 {{u"bonificadorarmadura"_s, u"txtBonificadorArmadura"_s, true},
                                  {u"bonificadordestreza"_s, u"txtBonificadorDestreza"_s, true},
                                  {u"penalizadorarmadura"_s, u"txtPenalizadorArmadura"_s, true},
                                  {u"falloconjuro"_s, u"txtFalloConjuro"_s, true},
                                  {u"categoria"_s, u"txtCategoria"_s, true},
                                  {u"precio"_s, u"txtPrecio"_s, true},
                                  {u"peso"_s, u"txtPeso"_s, true},
                                  {u"imagen"_s, u"txtImagen"_s, false},
                                  {u"notas"_s, u"txtNotas"_s, false}}};
    return kind;
}

} // namespace

FrmArmaduras& frmArmaduras()
{
    return platform::FormRegistry::shared<FrmArmaduras>();
}

FrmArmaduras::FrmArmaduras() : ItemEditorForm(editorKind(), armaduraEditada) {}
