#include <QBoxLayout>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>

#include "qt/binders.h"
#include "qt/main_window.h"
#include "screens/data_tab_layout.h"
#include "screens/frm_main.h"

namespace ketrel {

namespace {

Field& fieldNamed(FrmMain& m, const std::string& name) {
    return *static_cast<Field*>(m.findControl(name));
}

QLabel* text(const QString& t) {
    return new QLabel(t);
}

QLabel* caption(Field& f) {
    auto* l = new QLabel;
    BindLabel(l, f);
    return l;
}

// A value read-out: a sunken white box.
QLabel* readout(Field& f, int width = 110) {
    auto* l = new QLabel;
    l->setObjectName(QString::fromStdString(f.fullName()));
    l->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    l->setAutoFillBackground(true);
    QPalette p = l->palette();
    p.setColor(QPalette::Window, Qt::white);
    l->setPalette(p);
    l->setMinimumWidth(width);
    l->setAlignment(Qt::AlignCenter);
    BindLabel(l, f);
    return l;
}

QTableWidget* grid(Grid& g) {
    auto* t = new QTableWidget;
    t->setObjectName(QString::fromStdString(g.name()));
    BindGrid(t, g);
    return t;
}

// A frame of a tab: a plain widget that follows the frame field's visibility.
QWidget* frame(Field& f) {
    auto* w = new QWidget;
    w->setObjectName(QString::fromStdString(f.name()));
    BindState(w, f);
    return w;
}

// Key texts that stand on a tab as they are, one under the other or side by side.
QWidget* legend(const std::vector<const char*>& lines, Qt::Orientation way = Qt::Vertical) {
    auto* w = new QWidget;
    QBoxLayout* box = way == Qt::Vertical ? static_cast<QBoxLayout*>(new QVBoxLayout(w))
                                          : static_cast<QBoxLayout*>(new QHBoxLayout(w));
    box->setAlignment(way == Qt::Vertical ? Qt::AlignTop : Qt::AlignLeft);
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(way == Qt::Vertical ? 1 : 24);
    for (const char* line : lines) {
        auto* l = text(line);
        l->setObjectName("legend");
        QFont f = l->font();
        f.setPointSizeF(f.pointSizeF() * 0.9);
        l->setFont(f);
        box->addWidget(l);
    }
    return w;
}

// A frame centred in the space its tab leaves it; the holder follows the frame's visibility.
QWidget* centred(QWidget* inner, Control& c) {
    auto* holder = new QWidget;
    auto* g = new QGridLayout(holder);
    g->setContentsMargins(0, 0, 0, 0);
    g->addWidget(inner, 1, 1);
    for (int edge : {0, 2}) {
        g->setRowStretch(edge, 1);
        g->setColumnStretch(edge, 1);
    }
    BindState(holder, c);
    return holder;
}

}  // namespace

QWidget* MakeDataPage(FrmMain& m) {
    auto* page = new QWidget;
    auto* v = new QVBoxLayout(page);
    auto* check = new QGroupBox;
    Follow(check, m.frCheckEngine,
           [check, &m] { check->setTitle(QString::fromStdString(m.frCheckEngine.text())); });
    auto* checkRow = new QHBoxLayout(check);
    auto* mil = new QLabel;
    mil->setObjectName("imgMIL");
    BindPicture(mil, m.imgMIL, 24);
    checkRow->addWidget(mil);
    checkRow->addSpacing(130);
    auto* top = new QHBoxLayout;
    top->addWidget(check);
    top->addStretch();
    v->addLayout(top);

    QWidget* values = frame(m.Frame14);
    auto* g = new QGridLayout(values);
    g->setVerticalSpacing(3);
    g->setHorizontalSpacing(8);
    for (const DataTabRow& row : kDataTabRows) {
        int col = row.gridCol == 1 ? 0 : 5;
        auto* ind = new QLabel;
        ind->setObjectName(QString("Image1(%1)").arg(row.indicator));
        BindPicture(ind, m.Image1[row.indicator], 12);
        BindClick(ind, m.Image1[row.indicator]);
        g->addWidget(ind, row.gridRow, col);
        g->addWidget(caption(m.Label1[row.captionItem]), row.gridRow, col + 1);
        g->addWidget(readout(fieldNamed(m, row.label)), row.gridRow, col + 2);
        if (row.unitField) {
            g->addWidget(caption(fieldNamed(m, row.unitField)), row.gridRow, col + 3);
        } else {
            g->addWidget(text(row.unitWord), row.gridRow, col + 3);
        }
    }
    g->setColumnMinimumWidth(4, 60);
    g->setColumnMinimumWidth(1, 200);
    g->setColumnMinimumWidth(6, 200);
    g->setColumnMinimumWidth(3, 50);
    g->setColumnMinimumWidth(8, 50);
    v->addWidget(centred(values, m.Frame14), 1);
    v->addWidget(grid(m.GridData), 1);
    auto* air = new QHBoxLayout;
    air->addWidget(legend({"SECONDARY AIR STATUS:"}));
    air->addSpacing(12);
    air->addWidget(legend({"1 = UPSTREAM FIRST CATALYST", "2 = DOWNSTREAM FIRST CATALYST INLET",
                           "3 = ATOMOSPHERE/OFF"},
                          Qt::Horizontal),
                   1);
    v->addLayout(air);
    return page;
}

QWidget* MakeMonitorPage(FrmMain& m) {
    auto* page = new QWidget;
    auto* outer = new QVBoxLayout(page);
    QWidget* f = frame(m.Frame3);
    auto* v = new QVBoxLayout(f);
    v->addWidget(grid(m.msMonitorGrid), 3);
    v->addWidget(grid(m.msGridReady), 1);
    outer->addWidget(f);
    return page;
}

QWidget* MakeCodesPage(FrmMain& m) {
    auto* page = new QWidget;
    auto* outer = new QVBoxLayout(page);
    QWidget* f = frame(m.Frame10);
    auto* v = new QVBoxLayout(f);
    auto* top = new QHBoxLayout;
    auto* codes = new QVBoxLayout;
    codes->addWidget(text("STORED TROUBLE CODES"));
    codes->addWidget(grid(m.gridTroubleCode));
    codes->addWidget(text("PENDING TROUBLE CODES"));
    codes->addWidget(grid(m.gridPending));
    top->addLayout(codes, 3);

    auto* ff = new QGroupBox("FREEZE FRAME DATA");
    auto* fg = new QGridLayout(ff);
    Field* ffFields[] = {&m.lblFFFuelSys1, &m.lblFFFuelSys2,  &m.lblFFLoad,   &m.lblFFCoolant,
                         &m.lblFFSTFTB1,   &m.lblFFLTFTB1,    &m.lblFFSTFTB2, &m.lblFFLTFTB2,
                         &m.lblFFFuelPres, &m.lblFFMAP,       &m.lblFFRPM,    &m.lblFFSpeed,
                         &m.lblFFTiming,   &m.lblFFIntakeAir, &m.lblFFMAF,    &m.lblFFTPS};
    for (int i = 0; i < 16; ++i) {
        fg->addWidget(caption(m.Label2[i]), i, 0);
        fg->addWidget(readout(*ffFields[i], 100), i, 1);
    }
    top->addWidget(ff, 2);
    v->addLayout(top);

    auto* buttons = new QHBoxLayout;
    for (Field* b : {&m.cmdClearCodes, &m.cmdRequestFF, &m.cmdRequestTC, &m.cmdRequestPending,
                     &m.cmdPrintFFData})
        buttons->addWidget(MakeButton(*b));
    v->addLayout(buttons);
    QLabel* note = caption(m.lblCodesNote);
    note->setWordWrap(true);
    v->addWidget(note);
    auto* legends = new QHBoxLayout;
    legends->addWidget(legend({"OBD II First Character Code:", "P = POWERTRAIN", "B = BODY",
                               "C = CHASSIS", "U = NETWORK COMMUNICATION"}));
    legends->addSpacing(40);
    legends->addWidget(legend({"OBD II Second Character Code:", "0 = S.A.E", "1 = MANUFACTURE"}), 0,
                       Qt::AlignTop);
    legends->addStretch();
    v->addLayout(legends);
    outer->addWidget(f);
    return page;
}

QWidget* MakeVehiclePage(FrmMain& m) {
    auto* page = new QWidget;
    auto* outer = new QVBoxLayout(page);
    QWidget* f = frame(m.Frame4);
    auto* h = new QHBoxLayout(f);

    auto* vehicle = new QGroupBox("VEHICLE INFORMATION");
    auto* form = new QGridLayout(vehicle);
    struct ComboRow {
        const char* caption;
        ComboBox* combo;
    } combos[] = {{"YEAR:", &m.cmbYear},
                  {"MAKE:", &m.cmbMake},
                  {"MODEL:", &m.cmbModel},
                  {"ENGINE:", &m.cmbEngine},
                  {"TRANSMISSION:", &m.cmbTransmission},
                  {"A/C:", &m.cmbAC}};
    int row = 0;
    for (const ComboRow& c : combos) {
        auto* box = new QComboBox;
        box->setObjectName(QString::fromStdString(c.combo->name()));
        // Year, make and model take typing; the other three only choose from their list.
        if (row < 3)
            BindEditableCombo(box, *c.combo);
        else
            BindCombo(box, *c.combo);
        form->addWidget(text(c.caption), row, 0);
        form->addWidget(box, row++, 1);
    }
    struct TextRow {
        const char* caption;
        Field* field;
    } texts[] = {{"PLATE:", &m.txtPlate}, {"V.I.N:", &m.txtVin}, {"MILEAGE:", &m.txtMileage}};
    for (const TextRow& t : texts) {
        auto* edit = new QLineEdit;
        edit->setObjectName(QString::fromStdString(t.field->name()));
        BindLineEdit(edit, *t.field);
        form->addWidget(text(t.caption), row, 0);
        form->addWidget(edit, row++, 1);
    }
    auto* vb = new QHBoxLayout;
    vb->addWidget(MakeButton(m.cmdRequestInfo));
    vb->addWidget(MakeButton(m.cmdClearVehicle));
    vb->addWidget(MakeButton(m.Command1));
    form->addLayout(vb, row++, 0, 1, 2);
    form->setRowStretch(row, 1);
    h->addWidget(vehicle, 1);

    auto* right = new QVBoxLayout;
    auto* proto = new QGroupBox("OBD II PROTOCOL:");
    auto* pv = new QVBoxLayout(proto);
    pv->addWidget(readout(m.lblWhatProtocol));
    pv->addWidget(legend({"1 = J1850 VPW", "2 = J1850 PWM", "3 = ISO 9141",
                          "4 = ISO 14230 (KEYWORD PROTOCOL 2000)"}));
    right->addWidget(proto);
    auto* ecu = new QGroupBox("ECU INFORMATION:");
    auto* eg = new QGridLayout(ecu);
    Field* ecuFields[] = {&m.lblECMAddress, &m.lblECMAddress2, &m.lblKeyword1, &m.lblKeyword2};
    for (int i = 0; i < 4; ++i) {
        eg->addWidget(caption(m.Label32[17 + i]), i, 0);
        eg->addWidget(readout(*ecuFields[i]), i, 1);
    }
    right->addWidget(ecu);
    right->addStretch();
    h->addLayout(right, 1);

    auto* design = new QGroupBox("DESIGN OBD REQUIREMENT:");
    auto* dv = new QVBoxLayout(design);
    dv->addWidget(readout(m.lblOBDDesign));
    dv->addWidget(
        legend({"1 = OBD II (CALIFORNIA ARB)", "2 = OBD (FEDERAL EPA)", "3 = OBD AND OBD II",
                "4 = OBD I", "5 = NOT OBD COMPLIANT", "6 = EOBD", "7 = EOBD AND OBD II",
                "8 = EOBD AND OBD", "9 = EOBD, OBD AND OBD II", "10 = JOBD", "11 = JOBD AND OBD II",
                "12 = JOBD AND EOBD", "13 = JOBD, EOBD, AND OBD II"}));
    dv->addStretch();
    h->addWidget(design, 1);
    outer->addWidget(f);

    // Debug fields, hidden until asked for.
    auto* debug = new QHBoxLayout;
    for (ListBox* l :
         {&m.LogData, &m.lstRecordData, &m.lstPendingCodes, &m.lstCodes, &m.lstFreezeCodes}) {
        auto* list = new QListWidget;
        list->setObjectName(QString::fromStdString(l->name()));
        BindList(list, *l);
        debug->addWidget(list);
    }
    auto* debugTexts = new QVBoxLayout;
    for (Field* t : {&m.Text2, &m.txtInputDORVANE, &m.txtInputBR3, &m.txtKesh}) {
        auto* edit = new QLineEdit;
        edit->setObjectName(QString::fromStdString(t->name()));
        BindLineEdit(edit, *t);
        debugTexts->addWidget(edit);
    }
    debugTexts->addWidget(MakeButton(m.Command4));
    debug->addLayout(debugTexts);
    outer->addLayout(debug);
    return page;
}

QWidget* MakeSupportPage(FrmMain& m) {
    auto* page = new QWidget;
    auto* outer = new QVBoxLayout(page);
    QWidget* f = frame(m.Frame12);
    auto* v = new QVBoxLayout(f);
    auto* tabs = new QTabWidget;
    tabs->setObjectName("SSTab2");
    for (Grid* g : {&m.msM1Grid, &m.msM3Grid, &m.msM4Grid, &m.msM2Grid})
        tabs->addTab(grid(*g), QString());
    BindTabs(tabs, m.SSTab2);
    v->addWidget(tabs);
    outer->addWidget(f);
    return page;
}

}  // namespace ketrel
