#!/usr/bin/env python3
# Makes the server-algorithm documents of tst_config_srvalg from the page's
# tables (node order, attribute order, defaults), independently of the code.
# Run from this directory; the outputs are checked in.
decl = '<?xml version="1.0" encoding="windows-1251"?>\n'


def ocs(vals):
    return ' '.join('oc%d="%d"' % (i + 1, v) for i, v in enumerate(vals))


zeros = [0] * 20
wifi = ["70mai", "galaxy", "iphone", "honor", "realme", "redmi", "vivo", "samsung", "xiaomi", "zte", "", ""]

d = decl + '<CONFIG>\n'
d += '    <SIM1RULES cnctH="1" cnctR="0" callH="1" callR="0" smsH="1" smsR="0" listH="0" autoOper="0" />\n'
d += '    <SIM1BLIST %s />\n' % ocs(zeros)
d += '    <SIM1WLIST dw="0" check="0" %s />\n' % ocs(zeros)
d += ('    <RULES pingTimer="90" telAddPing="0" noPriorMsg="1" noCur="0" grpTimer="30" useCmd="1"'
      ' cnctTimer="3600" coercCnct="0" blockTimer="300" />\n')
d += '    <ROAM cnctTimer="3600" moveTimer="1800" stopTimer="3600" blockTimer="300" />\n'
d += '    <WIFIBLIST %s />\n' % ' '.join('bm%d="%s"' % (i + 1, n) for i, n in enumerate(wifi))
d += '</CONFIG>\n'
open('srvalg_defaults_one_sim.xml', 'w').write(d)

b1 = [25001, 25002, 0, 25099] + [0] * 15 + [999999]
w1 = [25020, 25011] + [0] * 17 + [40101]
b2 = [0] * 20
b2[9] = 25035
w2 = [25001 + i for i in range(20)]
d = decl + '<CONFIG>\n'
d += '    <SIM1RULES cnctH="2" cnctR="3" callH="0" callR="1" smsH="1" smsR="1" listH="1" autoOper="1" />\n'
d += '    <SIM1BLIST %s />\n' % ocs(b1)
d += '    <SIM1WLIST dw="1" check="1" %s />\n' % ocs(w1)
d += '    <SIM2RULES cnctH="0" cnctR="4" callH="1" callR="0" smsH="0" smsR="1" listH="0" autoOper="1" />\n'
d += '    <SIM2BLIST %s />\n' % ocs(b2)
d += '    <SIM2WLIST dw="0" check="1" %s />\n' % ocs(w2)
d += ('    <RULES pingTimer="3600" telAddPing="1" noPriorMsg="0" noCur="1" grpTimer="0" useCmd="0"'
      ' cnctTimer="86340" coercCnct="1" blockTimer="5400" />\n')
d += '    <ROAM cnctTimer="0" moveTimer="599940" stopTimer="60" blockTimer="82800" />\n'
d += ('    <WIFIBLIST bm1="" bm2="Office AP" bm3="iphone" bm4="" bm5="" bm6="" bm7="" bm8="" bm9="" bm10=""'
      ' bm11="car-7" bm12="" />\n')
d += '</CONFIG>\n'
open('srvalg_two_sims.xml', 'w').write(d)
