#include "qt/settings_window.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTabWidget>
#include <QVBoxLayout>

#include "qt/binders.h"
#include "screens/frm_connecting.h"
#include "screens/frm_settings.h"

namespace ketrel {

namespace {

QRadioButton* option(Toggle& t) {
    auto* r = new QRadioButton;
    r->setObjectName(ObjectName(t));
    BindToggle(r, t);
    return r;
}

QCheckBox* check(Toggle& t) {
    auto* c = new QCheckBox;
    c->setObjectName(ObjectName(t));
    BindToggle(c, t);
    return c;
}

QLabel* label(Field& f) {
    auto* l = new QLabel;
    l->setObjectName(ObjectName(f));
    BindLabel(l, f);
    return l;
}

QComboBox* combo(ComboBox& c) {
    auto* b = new QComboBox;
    b->setObjectName(ObjectName(c));
    b->setMinimumWidth(230);
    BindCombo(b, c);
    return b;
}

// A group box whose title is one of the screen's caption fields.
QGroupBox* group(Field& title) {
    auto* g = new QGroupBox;
    Follow(g, title, [g, &title] { g->setTitle(QString::fromStdString(title.text())); });
    return g;
}

QGroupBox* group(const char* title) {
    return new QGroupBox(title);
}

QGroupBox* optionGroup(QGroupBox* g, std::initializer_list<Toggle*> options) {
    auto* v = new QVBoxLayout(g);
    for (Toggle* t : options)
        v->addWidget(option(*t));
    return g;
}

// A page: its content above, its buttons bottom right.
QWidget* page(QLayout* content, std::initializer_list<Field*> buttons) {
    auto* w = new QWidget;
    auto* v = new QVBoxLayout(w);
    v->addLayout(content);
    v->addStretch();
    auto* line = new QFrame;
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    v->addWidget(line);
    auto* row = new QHBoxLayout;
    row->addStretch();
    for (Field* b : buttons)
        row->addWidget(MakeButton(*b));
    v->addLayout(row);
    return w;
}

QWidget* unitsPage(FrmSettings& s) {
    auto* v = new QVBoxLayout;
    v->addWidget(optionGroup(group("TEMPERATURE"), {&s.optFarenheit, &s.optCelcius}));
    QGroupBox* speed = optionGroup(group("SPEED"), {&s.optMiles, &s.optKilometers});
    QLabel* note = label(s.lblSpeedNote);
    note->setWordWrap(true);
    speed->layout()->addWidget(note);
    v->addWidget(speed);
    v->addWidget(optionGroup(group("PRESSURE"), {&s.optPSI, &s.optKPA}));
    return page(v, {&s.cmdApplyUnits, &s.cmdDefault, &s.cmdClose0});
}

QWidget* devicePage(FrmSettings& s) {
    auto* g = new QGridLayout;
    g->addWidget(label(s.Label[0]), 0, 0, 1, 2);
    g->addWidget(combo(s.cmbInterface), 1, 0, 1, 2);
    g->addWidget(label(s.Label[1]), 2, 0);
    g->addWidget(combo(s.cmbPort), 3, 0);
    // The device a port number stands for.
    auto* device = new QHBoxLayout;
    device->addWidget(label(s.Label[13]));
    device->addWidget(label(s.lblDevicePath), 1);
    g->addLayout(device, 2, 1);
    auto* path = new QLineEdit;
    path->setObjectName("txtDevicePath");
    g->addWidget(path, 3, 1);
    BindLineEdit(path, s.txtDevicePath);
    g->addWidget(label(s.Label[2]), 4, 0, 1, 2);
    auto* timeout = new QHBoxLayout;
    QComboBox* seconds = combo(s.cmbTimedOut);
    seconds->setMinimumWidth(80);
    timeout->addWidget(seconds);
    timeout->addWidget(label(s.Label[3]), 1);
    g->addLayout(timeout, 5, 0, 1, 2);

    QGroupBox* delay = group(s.Label[12]);
    auto* dg = new QGridLayout(delay);
    auto* slider = new QSlider(Qt::Horizontal);
    slider->setObjectName("sldBR3Speed");
    slider->setTickPosition(QSlider::TicksBelow);
    slider->setTickInterval(25);
    BindSlider(slider, s.sldBR3Speed);
    dg->addWidget(slider, 0, 0);
    QLabel* value = label(s.lblBR3Delay);
    value->setMinimumWidth(40);
    value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    dg->addWidget(value, 0, 1);
    dg->addWidget(check(s.chkSetDelay), 0, 2);
    dg->addWidget(label(s.lblRecommend[0]), 1, 0, 1, 3);
    g->addWidget(delay, 6, 0, 1, 2);
    auto* detect = new QHBoxLayout;
    detect->addWidget(MakeButton(s.cmdAutoDetect));
    detect->addWidget(label(s.lblAdapter), 1);
    g->addLayout(detect, 7, 0, 1, 2);
    return page(g, {&s.cmdApplyDevice, &s.cmdClose1});
}

QWidget* displayPage(FrmSettings& s) {
    auto* v = new QVBoxLayout;
    v->addWidget(label(s.Label[4]));
    auto* list = new QListWidget;
    list->setObjectName("lstDisplaySettings");
    BindList(list, s.lstDisplaySettings);
    v->addWidget(list);
    v->addWidget(label(s.Label[5]));
    QLabel* current = label(s.lblCurrentDisplaySettings);
    current->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    current->setMinimumHeight(24);
    v->addWidget(current);
    auto* row = new QHBoxLayout;
    row->addWidget(MakeButton(s.cmdCurrentDisplaySettings));
    row->addWidget(MakeButton(s.cmdChangeDisplaySettings));
    v->addLayout(row);
    return page(v, {&s.cmdClose2});
}

QWidget* alertsPage(FrmSettings& s) {
    auto* g = new QGridLayout;
    g->addWidget(optionGroup(group(s.Label[6]), {&s.optDisplayOn, &s.optDisplayOff}), 0, 0);
    g->addWidget(optionGroup(group(s.Label[7]), {&s.optMilOn, &s.optMilOff}), 0, 1);
    g->addWidget(optionGroup(group(s.Label[8]), {&s.optYES, &s.optNO}), 1, 0, 1, 2);
    QGroupBox* log = group("CONNECTING LOG");
    auto* lg = new QGridLayout(log);
    lg->addWidget(check(s.chConLog), 0, 0, 1, 2);
    lg->addWidget(new QLabel("LOG SIZE:"), 1, 0);
    lg->addWidget(label(s.lblFileSize), 1, 1);
    lg->addWidget(MakeButton(s.Command1), 2, 0);
    lg->addWidget(MakeButton(s.Command2), 2, 1);
    g->addWidget(log, 2, 0, 1, 2);
    return page(g, {&s.cmdApplyOther, &s.cmdDefault1, &s.cmdClose3});
}

QWidget* sequencePage(FrmSettings& s) {
    auto* v = new QVBoxLayout;
    v->addWidget(optionGroup(group(s.Label[9]), {&s.KWP1, &s.KWP2, &s.KWP3}));
    v->addWidget(optionGroup(group(s.Label[10]), {&s.BR1, &s.BR2, &s.BR3, &s.BR4, &s.BR5}));
    QGroupBox* second = group(s.Label[11]);
    (new QVBoxLayout(second))->addWidget(check(s.ck2ndConnect));
    v->addWidget(second);
    return page(v, {&s.cmdApplyKWP, &s.cmdDefault2, &s.cmdClose4});
}

}  // namespace

QWidget* MakeSettingsWindow(FrmSettings& s) {
    auto* w = new QWidget;
    w->setObjectName("frmSettings");
    auto* v = new QVBoxLayout(w);
    auto* tabs = new QTabWidget;
    tabs->setObjectName("SSTab1");
    tabs->setUsesScrollButtons(false);  // the window widens so that every page's tab shows
    tabs->addTab(unitsPage(s), QString());
    tabs->addTab(devicePage(s), QString());
    tabs->addTab(displayPage(s), QString());
    tabs->addTab(alertsPage(s), QString());
    tabs->addTab(sequencePage(s), QString());
    BindTabs(tabs, s.SSTab1);
    v->addWidget(tabs);
    return w;
}

QWidget* MakeSplashWindow(FrmSplash& s) {
    auto* w = new QFrame;
    w->setObjectName("frmSplash");
    w->setWindowFlags(Qt::SplashScreen | Qt::FramelessWindowHint);
    w->setFrameStyle(QFrame::Box | QFrame::Plain);
    w->setLineWidth(1);
    w->setAutoFillBackground(true);
    QPalette p = w->palette();
    p.setColor(QPalette::Window, QColor(24, 48, 88));
    p.setColor(QPalette::WindowText, Qt::white);
    w->setPalette(p);
    auto* v = new QVBoxLayout(w);
    v->setContentsMargins(28, 28, 28, 20);
    QLabel* title = label(s.lblTitle);
    QFont big = title->font();
    big.setPointSize(32);
    big.setBold(true);
    title->setFont(big);
    v->addStretch();
    v->addWidget(title);
    QLabel* version = label(s.lblVersion);
    QFont mid = version->font();
    mid.setPointSize(13);
    version->setFont(mid);
    v->addWidget(version);
    v->addStretch();
    v->addWidget(label(s.lblNote));
    w->resize(493, 295);
    return w;
}

}  // namespace ketrel
