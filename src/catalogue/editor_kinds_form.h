#pragma once

#include "catalogue/item_editor_form.h"

// The tables that drive the four editors.
const EditorKind& armasEditor();
const EditorKind& armadurasEditor();
const EditorKind& equipoEditor();
const EditorKind& conjurosEditor();
