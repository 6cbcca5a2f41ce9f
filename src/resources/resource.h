// Resource ids of quorvel.dll.
//
// Included by quorvel.rc and by C++ code, so it holds nothing but #defines of
// plain integer constants. Every name carries a QV prefix so that it cannot
// collide with ids from the host application's own resource.h.
//
// The numbers belong to the DLL's interface (hosts may load these
// resources from the DLL by id), so existing values never change.
#ifndef QUORVEL_RESOURCES_RESOURCE_H
#define QUORVEL_RESOURCES_RESOURCE_H

// ---------------------------------------------------------------------------
// Dialog templates
// ---------------------------------------------------------------------------
#define IDD_QV_FORMVIEW            129  // empty child page, 247 x 167 DLU
#define IDD_QV_FONTNAME            140  // "Select a font"
#define IDD_QV_FONTSIZE            141  // "Font size"
#define IDD_QV_NEVERSHOWN          144  // placeholder, never displayed
#define IDD_QV_COLORGRID          5000  // colour grid popup under a colour button
#define IDD_QV_FONTCOLOR          5022  // font and colour dialog

// ---------------------------------------------------------------------------
// Bitmaps (background RGB(192,192,192); drawn by tools/make_bitmaps.py)
// ---------------------------------------------------------------------------
// Splitter collapse buttons: 10 wide, 43 high, to fit the buttons of the
// splitter's vertical bar; 32 bits per pixel, 1772 bytes each as resources.
#define IDB_QV_SPLITTER_RIGHT_DOWN 136  // lower splitter button held down: arrow pointing right
#define IDB_QV_SPLITTER_LEFT_DOWN  137  // upper splitter button held down: arrow pointing left
#define IDB_QV_SPLITTER_RIGHT      138  // lower splitter button: arrow pointing right
#define IDB_QV_SPLITTER_LEFT       139  // upper splitter button: arrow pointing left
#define QV_SPLITTER_FACE_LONG       43  // pixels along the bar
#define QV_SPLITTER_FACE_SHORT      10  // pixels across the bar

// 20 x 20 faces, 4 bits per pixel, 344 bytes each as resources.
#define IDB_QV_BROWSE              142  // browse button: "..."
#define IDB_QV_VIEWER_OPEN         143  // viewer: open in the associated application
                                        // (a frame with an arrow leaving it)
#define IDB_QV_VIEWER_REFRESH      145  // viewer: reload (clockwise ring arrow)
#define QV_SMALL_FACE_SIZE          20

// ---------------------------------------------------------------------------
// Controls
// ---------------------------------------------------------------------------
// Items without an id of their own (labels, group boxes).
#define IDC_QV_STATIC              (-1)

// IDD_QV_COLORGRID: 20 owner-drawn colour cells, four per row, numbered in
// row order (IDC_QV_COLOR_FIRST is the top-left cell), and the "Other..."
// button that opens the full colour chooser.
#define IDC_QV_COLOR_FIRST        5001
#define IDC_QV_COLOR_01           5001
#define IDC_QV_COLOR_02           5002
#define IDC_QV_COLOR_03           5003
#define IDC_QV_COLOR_04           5004
#define IDC_QV_COLOR_05           5005
#define IDC_QV_COLOR_06           5006
#define IDC_QV_COLOR_07           5007
#define IDC_QV_COLOR_08           5008
#define IDC_QV_COLOR_09           5009
#define IDC_QV_COLOR_10           5010
#define IDC_QV_COLOR_11           5011
#define IDC_QV_COLOR_12           5012
#define IDC_QV_COLOR_13           5013
#define IDC_QV_COLOR_14           5014
#define IDC_QV_COLOR_15           5015
#define IDC_QV_COLOR_16           5016
#define IDC_QV_COLOR_17           5017
#define IDC_QV_COLOR_18           5018
#define IDC_QV_COLOR_19           5019
#define IDC_QV_COLOR_20           5020
#define IDC_QV_COLOR_LAST         5020
#define QV_COLOR_CELL_COUNT         20
#define QV_COLOR_GRID_COLUMNS        4
#define IDC_QV_COLOR_OTHER        5021

// IDD_QV_FONTNAME
#define IDC_QV_FONTNAME_COMBO     5023  // drop-down list of face names (sorted)

// IDD_QV_FONTSIZE
#define IDC_QV_FONTSIZE_EDIT      5024  // size in points
#define IDC_QV_FONTSIZE_LABEL     5027  // "Font size in points:"

// IDD_QV_FONTCOLOR (OK and Cancel are IDOK and IDCANCEL)
#define IDC_QV_FONTCOLOR_DEFAULT     3  // "Default": back to the default font and colours
#define IDC_QV_FONTCOLOR_FACE     5029  // face name combo (sorted)
#define IDC_QV_FONTCOLOR_HEIGHT   5030  // height combo
#define IDC_QV_FONTCOLOR_STYLE    5031  // style combo
#define IDC_QV_FONTCOLOR_TEXTBTN  5034  // "..." choosing the text colour
#define IDC_QV_FONTCOLOR_BACKBTN  5036  // "..." choosing the background colour
#define IDC_QV_FONTCOLOR_TEXTSWATCH 5038  // shows the text colour
#define IDC_QV_FONTCOLOR_BACKSWATCH 5039  // shows the background colour
#define IDC_QV_FONTCOLOR_BACKLABEL 5040  // "Background Color" label
#define IDC_QV_FONTCOLOR_PREVIEW  5041  // sample text in the chosen font and colours

#endif  // QUORVEL_RESOURCES_RESOURCE_H
