#include "catalogue/editor_kinds_form.h"

#include "app/workspace.h"

using namespace Qt::StringLiterals;

namespace {

/// A line of text, selected whole when it gets the focus.
EditorField text(const QString& key, const QString& control)
{
    return {key, control, true};
}

EditorField check(const QString& key, const QString& control)
{
    return {key, control, false};
}

/// What every item ends with: its picture and notes.
std::vector<EditorField> item(std::vector<EditorField> fields)
{
    fields.push_back({u"imagen"_s, u"txtImagen"_s, false});
    fields.push_back({u"notas"_s, u"txtNotas"_s, false});
    return fields;
}

/// An item that can be bought and carried.
std::vector<EditorField> thing(std::vector<EditorField> fields)
{
    fields.push_back(text(u"precio"_s, u"txtPrecio"_s));
    fields.push_back(text(u"peso"_s, u"txtPeso"_s));
    return item(std::move(fields));
}

} // namespace

const EditorKind& armasEditor()
{
    static const EditorKind kind{
        .document = []() -> CatalogueDocument& { return workspace().armas; },
        .itemWord = u"arma"_s,
        .owner = u"Formulario frmArmas"_s,
        .pictureFolder = u"ini\\pics\\armas"_s,
        .pictureControl = u"imgArma"_s,
        .nameSelectsAll = true,
        .fields = thing({text(u"dp"_s, u"txtDP"_s), text(u"dm"_s, u"txtDM"_s),
                         text(u"critico"_s, u"txtCritico"_s),
                         text(u"categoria"_s, u"txtCategoria"_s), text(u"tipo"_s, u"txtTipo"_s)})};
    return kind;
}

const EditorKind& armadurasEditor()
{
    static const EditorKind kind{
        .document = []() -> CatalogueDocument& { return workspace().armaduras; },
        .itemWord = u"armadura"_s,
        .owner = u"Formulario frmArmaduras"_s,
        .pictureFolder = u"ini\\pics\\armaduras"_s,
        .pictureControl = u"imgArmadura"_s,
        .nameSelectsAll = true,
        .fields = thing({text(u"bonificadorarmadura"_s, u"txtBonificadorArmadura"_s),
                         text(u"bonificadordestreza"_s, u"txtBonificadorDestreza"_s),
                         text(u"penalizadorarmadura"_s, u"txtPenalizadorArmadura"_s),
                         text(u"falloconjuro"_s, u"txtFalloConjuro"_s),
                         text(u"categoria"_s, u"txtCategoria"_s)})};
    return kind;
}

const EditorKind& equipoEditor()
{
    static const EditorKind kind{
        .document = []() -> CatalogueDocument& { return workspace().equipo; },
        .itemWord = u"equipo"_s,
        .owner = u"Formulario frmEquipos"_s,
        .pictureFolder = u"ini\\pics\\equipo"_s,
        .pictureControl = u"imgEquipo"_s,
        .nameSelectsAll = false,
        .fields = thing({check(u"magico"_s, u"chkMagico"_s)})};
    return kind;
}

const EditorKind& conjurosEditor()
{
    static const EditorKind kind{
        .document = []() -> CatalogueDocument& { return workspace().conjuros; },
        .itemWord = u"conjuro"_s,
        .owner = u"Formulario frmConjuros"_s,
        .pictureFolder = u"ini\\pics\\conjuros"_s,
        .pictureControl = u"imgConjuro"_s,
        .nameSelectsAll = true,
        .fields = item(
            {text(u"tipo"_s, u"txtTipo"_s), text(u"nivel"_s, u"txtNivel"_s),
             check(u"magiasalvaje"_s, u"chkMagiaSalvaje"_s),
             check(u"reversible"_s, u"chkReversible"_s), text(u"escuela"_s, u"txtEscuela"_s),
             text(u"esfera"_s, u"txtEsfera"_s), text(u"alcance"_s, u"txtAlcance"_s),
             text(u"componentes"_s, u"txtComponentes"_s), text(u"duracion"_s, u"txtDuracion"_s),
             text(u"tlanzamiento"_s, u"txtTlanzamiento"_s), text(u"area"_s, u"txtArea"_s),
             text(u"ts"_s, u"txtTS"_s), text(u"origen"_s, u"txtOrigen"_s),
             text(u"materiales"_s, u"txtMateriales"_s)})};
    return kind;
}
