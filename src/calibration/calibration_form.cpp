#include "calibration/calibration_form.h"

namespace kv408 {

CalibrationForm::CalibrationForm() {
    cmdreadcald.set_caption("Read Cal. from Kv408 flash memory");
    cmdwritecal.set_caption("Write Cal. to Kv408 flash memeory");
    cmdsetalltodefault.set_caption("Set all to Default none calibrated values");
    cmdrestorecal.set_caption("Restore...");
    cmdwritecal.set_enabled(false);
    cmdcalstop.set_caption("Stop");
    for (Button* const button :
         {&cmdsetforcalgainh, &cmdsetforcalgainh2, &cmdsetforcalgainl, &cmdsetforcalgainl2}) {
        button->set_caption("Set Cal");
    }
    cmdcalgain1h.set_caption("Cal GH1");
    cmdcalgain2h.set_caption("Cal GH2");
    cmdcalgain.set_caption("Cal GL1");
    cmdcalg2l.set_caption("Cal GL2");
    cmdsetforcalh.set_caption("Set for CalH");
    cmdcaoffseth.set_caption("Cal. OffsetH");
    cmdsetforcall.set_caption("Set for CalL");
    cmdcaoffsetl.set_caption("Cal. OffsetL");
    cmdsetforcalhscale.set_caption("Set for Cal GL");
    cmdcaltb.set_caption("Cal. time base scale");
    cmdsetforlinearitycal.set_caption("Set for Linearity Calibration");
    cmdcalint.set_caption("Cal. Time Base Linearity");
    calerorcnt.set_caption("0");
    calerormax.set_caption("0");
}

} // namespace kv408
