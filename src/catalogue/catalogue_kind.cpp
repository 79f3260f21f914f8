#include "catalogue/catalogue_kind.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using platform::ListColumn;

ListColumn left(const QString& key, const QString& header, int twips)
{
    return {key, header, twips, Qt::AlignLeft};
}

ListColumn right(const QString& key, const QString& header, int twips)
{
    return {key, header, twips, Qt::AlignRight};
}

} // namespace

QString CatalogueKind::itemKey(const QString& name, const QString& secondField) const
{
    return keyHasType ? name + u'-' + secondField : name;
}

QString CatalogueKind::counted(int items) const
{
    return QString::number(items) + u' ' + (items == 1 ? oneItem : manyItems);
}

std::size_t CatalogueKind::positionOf(const QString& key) const
{
    const auto found = std::find_if(fields.begin(), fields.end(),
                                    [&](const ListColumn& field) { return field.key == key; });
    return static_cast<std::size_t>(found - fields.begin());
}

const CatalogueKind& armasKind()
{
    static const CatalogueKind kind{
        u"Armas.ini"_s,
        u"#Nombre; DP; DM; Critico; Categoria; Tipo; Precio; Peso; Imagen; notas"_s,
        u"loadArmas"_s,
        u"arma"_s,
        u"armas"_s,
        false,
        {left(u"nombre"_s, u"Nombre"_s, 1750), left(u"dp"_s, u"DP"_s, 700),
         left(u"dm"_s, u"DM"_s, 700), left(u"critico"_s, u"Critico"_s, 700),
         left(u"categoria"_s, u"Categoria"_s, 1400), left(u"tipo"_s, u"Tipo"_s, 1400),
         right(u"precio"_s, u"Precio"_s, 700), right(u"peso"_s, u"Peso"_s, 700),
         left(u"imagen"_s, u"Imagen"_s, 1400), left(u"notas"_s, u"Notas"_s, 1400)}};
    return kind;
}

const CatalogueKind& armadurasKind()
{
    static const CatalogueKind kind{
        u"Armaduras.ini"_s,
        u"#Nombre;BonificadorArmadura;BonificadorDestreza;PenalizadorArmadura;"
        "FalloConjuro;Categoria;Precio;Peso;Imagen;Notas "_s,
        u"loadArmaduras"_s,
        u"armadura"_s,
        u"armaduras"_s,
        false,
        {left(u"nombre"_s, u"Nombre"_s, 1750),
         left(u"bonificadorarmadura"_s, u"B. Armadura"_s, 700),
         left(u"bonificadordestreza"_s, u"B. Destreza"_s, 700),
         left(u"penalizadorarmadura"_s, u"P. Armadura"_s, 700),
         left(u"falloconjuro"_s, u"F. Conjuro"_s, 700), left(u"categoria"_s, u"Categoria"_s, 1400),
         right(u"precio"_s, u"Precio"_s, 700), right(u"peso"_s, u"Peso"_s, 700),
         left(u"imagen"_s, u"Imagen"_s, 1400), left(u"notas"_s, u"Notas"_s, 1400)}};
    return kind;
}

const CatalogueKind& equipoKind()
{
    static const CatalogueKind kind{
        u"Equipo.ini"_s,
        u"#nombre;Magico;precio;peso;imagen;notas"_s,
        u"loadEquipo"_s,
        u"elemento de equipo"_s,
        u"elementos de equipo"_s,
        false,
        {left(u"nombre"_s, u"Nombre"_s, 2100), left(u"magico"_s, u"Magico"_s, 700),
         right(u"precio"_s, u"Precio"_s, 700), right(u"peso"_s, u"Peso"_s, 700),
         left(u"imagen"_s, u"Imagen"_s, 1400), left(u"notas"_s, u"Notas"_s, 1400)}};
    return kind;
}

const CatalogueKind& conjurosKind()
{
    static const CatalogueKind kind{
        u"Conjuros.ini"_s,
        u"#Nombre;Conjurador;Nivel;Magiasalvaje;Reversible;Escuela;Esfera;Alcance;"
        "Componentes;Duracion;TLanzamiento;Area;TS;origen;Materiales;Imagen;Notas"_s,
        u"loadConjuros"_s,
        u"conjuro"_s,
        u"conjuros"_s,
        true,
        {left(u"nombre"_s, u"Nombre"_s, 2100), left(u"tipo"_s, u"Tipo"_s, 1050),
         left(u"nivel"_s, u"Nivel"_s, 350), left(u"magiasalvaje"_s, u"M. Salv."_s, 700),
         left(u"reversible"_s, u"Reversible"_s, 700), left(u"escuela"_s, u"Escuela"_s, 1050),
         right(u"esfera"_s, u"Esfera"_s, 1050), right(u"alcance"_s, u"Alcance"_s, 700),
         left(u"componentes"_s, u"Componentes"_s, 700), left(u"duracion"_s, u"Duración"_s, 700),
         left(u"tlanzamiento"_s, u"T. Lanz."_s, 700), left(u"area"_s, u"Area"_s, 700),
         left(u"ts"_s, u"T. Salv."_s, 700), left(u"origen"_s, u"Origen"_s, 1050),
         left(u"materiales"_s, u"Materiales"_s, 1400), left(u"imagen"_s, u"Imagen"_s, 1400),
         left(u"notas"_s, u"Notas"_s, 1400)}};
    return kind;
}
