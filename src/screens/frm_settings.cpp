#include "screens/frm_settings.h"

namespace ketrel {

FrmSettings::FrmSettings(EventLoop& loop) : Screen(loop, "frmSettings", "SETTINGS") {
    optFarenheit.setCaption("FAHRENHEIT {F}");
    optCelcius.setCaption("CELCIUS {C}");
    optMiles.setCaption("MILES {M.P.H.}");
    optKilometers.setCaption("KILOMETERS {K.P.H.}");
    optPSI.setCaption("PSI - In/Hg - In/H2O");
    optKPA.setCaption("kPa");
    optFarenheit.setGroup({&optFarenheit, &optCelcius});
    optCelcius.setGroup({&optFarenheit, &optCelcius});
    optMiles.setGroup({&optMiles, &optKilometers});
    optKilometers.setGroup({&optMiles, &optKilometers});
    optPSI.setGroup({&optPSI, &optKPA});
    optKPA.setGroup({&optPSI, &optKPA});
    lblSpeedNote.setText("(MPG - Km/L) AVERAGE WILL RESET WHEN CHANGED");

    chkSetDelay.setCaption("AUTO");
    cmdAutoDetect.setText("AUTO DETECT");

    cmdCurrentDisplaySettings.setText("Get Current Display Settings");
    cmdChangeDisplaySettings.setText("CHANGE DISPLAY SETTING");

    optDisplayOn.setCaption("ON");
    optDisplayOff.setCaption("OFF");
    optMilOn.setCaption("ON");
    optMilOff.setCaption("OFF");
    optYES.setCaption("YES");
    optNO.setCaption("NO");
    optDisplayOn.setGroup({&optDisplayOn, &optDisplayOff});
    optDisplayOff.setGroup({&optDisplayOn, &optDisplayOff});
    optMilOn.setGroup({&optMilOn, &optMilOff});
    optMilOff.setGroup({&optMilOn, &optMilOff});
    optYES.setGroup({&optYES, &optNO});
    optNO.setGroup({&optYES, &optNO});
    chConLog.setCaption("ENABLE CONNECTING LOG");
    Command1.setText("&VIEW");
    Command2.setText("&CLEAR");

    KWP1.setCaption("ALL (DEFAULT)");
    KWP2.setCaption("ISO 9141 ONLY");
    KWP3.setCaption("ISO 14230 (KWP 2000) ONLY");
    BR1.setCaption("ALL (DEFAULT)");
    BR2.setCaption("VPW ONLY");
    BR3.setCaption("PWM ONLY");
    BR4.setCaption("ISO 9141 ONLY");
    BR5.setCaption("ISO 14230 (KWP 2000) ONLY");
    std::vector<Toggle*> kwp{&KWP1, &KWP2, &KWP3};
    for (Toggle* t : kwp)
        t->setGroup(kwp);
    std::vector<Toggle*> br{&BR1, &BR2, &BR3, &BR4, &BR5};
    for (Toggle* t : br)
        t->setGroup(br);
    ck2ndConnect.setCaption("ENABLED");

    for (Field* f : {&cmdApplyUnits, &cmdApplyDevice, &cmdApplyOther, &cmdApplyKWP}) {
        f->setText("&Apply");
        f->setEnabled(false);
    }
    for (Field* f : {&cmdDefault, &cmdDefault1, &cmdDefault2})
        f->setText("&Default");
    for (Field* f : {&cmdClose0, &cmdClose1, &cmdClose2, &cmdClose3, &cmdClose4}) {
        f->setText("&Close");
    }

    // Captions that stand on the pages as they are.
    const char* captions[] = {"OBD II INTERFACE - SUPPORTED:",
                              "COM PORT SETTING:",
                              "TIMEOUT (SECONDS):",
                              "...10 SECONDS (DEFAULT)",
                              "AVAILABLE DISPLAY SETTINGS:",
                              "CURRENT DISPLAY SETTINGS:",
                              "DISPLAY WARNING:",
                              "CODE ALERT:",
                              "VEHICLE INFO SAVED WHEN DISCONNECT:",
                              "KESH/TACTRIX PROTOCOL",
                              "BR3  PROTOCOL",
                              "CONNECT WITH 2ND FRAME:",
                              "REQUEST DELAY (mS):",
                              "DEVICE:"};
    for (int i = 0; i < int(std::size(captions)); ++i)
        Label[i].setText(captions[i]);
    markDesign();
}

}  // namespace ketrel
