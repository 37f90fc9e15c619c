#ifndef ZOR_USERPARAMS_TABLES_H
#define ZOR_USERPARAMS_TABLES_H

// Content of the CAN and controller catalogue, one table per list, rows in
// parameter-number order. Only zor_userparams.cpp includes this file.
//
// A row is an entry, param(number, type text, caption key), or a bit of the
// nearest bit-set entry above it, bit(number, caption key). The key of a bit
// is its entry's key plus the bit's position in the set (1, 2, ...), which
// is why keys skip where numbers do not. The captions are in the language
// fragment catalogue.<lang>.lang; the comments below give the English ones.

#include <cstddef>

namespace zor_catalogue {

struct Row
{
    int nNum;
    const char* lpType; // nullptr for a bit
    const char* lpKey;
};

constexpr Row param(int nNum, const char* lpType, const char* lpKey)
{
    return {nNum, lpType, lpKey};
}

constexpr Row bit(int nNum, const char* lpKey)
{
    return {nNum, nullptr, lpKey};
}

constexpr bool sameText(const char* a, const char* b)
{
    while (*a && *a == *b) {
        ++a;
        ++b;
    }
    return *a == *b;
}

// Width in bytes of a type text the catalogue may use; 0 for anything else.
constexpr int typeWidth(const char* lpType)
{
    constexpr const char* kTypes[] = {"1b", "1u", "1s", "2b", "2u", "2s", "4b", "4u", "4s", "4f"};
    for (const char* t : kTypes)
        if (sameText(t, lpType))
            return t[0] - '0';
    return 0;
}

constexpr bool isBitSetType(const char* lpType)
{
    return lpType[1] == 'b';
}

// Numbers unique and ascending within 1-255, every type known, every key
// given, and every bit after a bit-set entry within that set's width.
template <std::size_t N>
constexpr bool isWellFormed(const Row (&rows)[N])
{
    int nPrev = 0;
    int nOwner = 0;
    int nOwnerBits = 0;
    for (const Row& row : rows) {
        if (row.nNum <= nPrev || row.nNum > 255 || !row.lpKey)
            return false;
        if (row.lpType) {
            const int nWidth = typeWidth(row.lpType);
            if (nWidth == 0)
                return false;
            nOwner = row.nNum;
            nOwnerBits = isBitSetType(row.lpType) ? 8 * nWidth : 0;
        } else if (row.nNum - nOwner > nOwnerBits) {
            return false;
        }
        nPrev = row.nNum;
    }
    return true;
}

// SC: parameters of the vehicle CAN bus.
constexpr Row kRows_SC[] = {
    param(1, "2u", "cfgt5_053"), // Engine speed, rpm
    param(2, "1u", "cfgt5_054"), // Accelerator pedal position, %
    param(3, "4f", "cfgt5_055"), // Total fuel used, l
    param(4, "2u", "cfgt5_056"), // Fuel level, l
    param(5, "1s", "cfgt5_057"), // Engine coolant temperature, °C
    param(6, "4f", "cfgt5_058"), // Total engine hours, h
    param(7, "2u", "cfgt5_059"), // Axle 1 load, kg
    param(8, "2u", "cfgt5_060"), // Axle 2 load, kg
    param(9, "2u", "cfgt5_061"), // Axle 3 load, kg
    param(10, "2u", "cfgt5_062"), // Axle 4 load, kg
    param(11, "2u", "cfgt5_063"), // Wheel-based vehicle speed, km/h
    param(12, "1u", "cfgt5_064"), // Brake pedal position, %
    param(13, "1u", "cfgt5_065"), // Engine load, %
    param(14, "1u", "cfgt5_066"), // Fuel level, %
    param(15, "2u", "cfgt5_067"), // Fuel rate, l/h
    param(16, "1u", "cfgt5_068"), // AdBlue level, %
    param(17, "4u", "cfgt5_069"), // Total vehicle distance, km
    param(18, "2s", "cfgt5_070"), // Engine oil temperature, °C
    param(19, "1u", "cfgt5_071"), // Engine oil pressure, kPa
    param(20, "2b", "cfgt5_072"), // Vehicle state
    bit(21, "cfgt5_073"), bit(22, "cfgt5_074"), bit(23, "cfgt5_075"), bit(24, "cfgt5_076"), bit(25, "cfgt5_077"),
    bit(26, "cfgt5_078"), bit(27, "cfgt5_079"), bit(28, "cfgt5_080"), bit(29, "cfgt5_081"), bit(30, "cfgt5_082"),
    bit(31, "cfgt5_083"), bit(32, "cfgt5_084"), bit(33, "cfgt5_085"), bit(34, "cfgt5_086"), bit(35, "cfgt5_087"),
    bit(36, "cfgt5_088"), param(38, "4b", "cfgt5_106"), // Dashboard warning lamps
    bit(39, "cfgt5_107"), bit(40, "cfgt5_108"), bit(41, "cfgt5_109"), bit(42, "cfgt5_110"), bit(43, "cfgt5_111"),
    bit(44, "cfgt5_112"), bit(45, "cfgt5_113"), bit(46, "cfgt5_114"), bit(47, "cfgt5_115"), bit(48, "cfgt5_116"),
    bit(49, "cfgt5_117"), bit(50, "cfgt5_118"), bit(51, "cfgt5_119"), bit(52, "cfgt5_120"), bit(53, "cfgt5_121"),
    bit(54, "cfgt5_122"), bit(55, "cfgt5_123"), bit(56, "cfgt5_124"), bit(57, "cfgt5_125"), bit(58, "cfgt5_126"),
    bit(59, "cfgt5_127"), bit(60, "cfgt5_128"), bit(61, "cfgt5_129"), bit(63, "cfgt5_130"), bit(64, "cfgt5_131"),
    bit(65, "cfgt5_132"), bit(66, "cfgt5_133"), bit(67, "cfgt5_134"), bit(69, "cfgt5_135"), bit(70, "cfgt5_136"),
    param(71, "1b", "cfgt5_137"), // Lights
    bit(72, "cfgt5_138"), bit(73, "cfgt5_139"), bit(74, "cfgt5_140"), bit(75, "cfgt5_141"), bit(76, "cfgt5_142"),
    bit(77, "cfgt5_143"), bit(78, "cfgt5_144"), bit(79, "cfgt5_145"),
    param(80, "4u", "cfgt5_146"), // Distance to next service, km
};
static_assert(isWellFormed(kRows_SC), "SC: numbers ascend, bits fit their set");

// BC: additional parameters of the other CAN variant (special vehicles).
// The set 20 would give its last bit (28) the key of entry 29, cfgt5_473;
// that bit takes cfgt5_476, the first key after the catalogue's range.
constexpr Row kRows_BC[] = {
    param(1, "1u", "cfgt5_446"), // Current gear
    param(2, "1u", "cfgt5_447"), // Engine torque, %
    param(3, "1u", "cfgt5_448"), // Boost pressure, kPa
    param(4, "2u", "cfgt5_449"), // Fuel rate, l/h
    param(5, "2u", "cfgt5_450"), // Supply voltage, V
    param(6, "2u", "cfgt5_451"), // Tachograph vehicle speed, km/h
    param(7, "2u", "cfgt5_452"), // Brake circuit air pressure, kPa
    param(8, "2s", "cfgt5_453"), // Ambient air temperature, °C
    param(9, "2s", "cfgt5_454"), // Hydraulic oil temperature, °C
    param(10, "1u", "cfgt5_455"), // Hydraulic oil level, %
    param(11, "2u", "cfgt5_456"), // Hydraulic pressure, bar
    param(12, "1u", "cfgt5_457"), // Coolant level, %
    param(13, "2u", "cfgt5_458"), // PTO shaft speed, rpm
    param(14, "4u", "cfgt5_459"), // Total PTO hours, h
    param(15, "4u", "cfgt5_460"), // Total engine idle hours, h
    param(16, "4u", "cfgt5_461"), // Total idle fuel used, l
    param(17, "1u", "cfgt5_462"), // Engine oil level, %
    param(18, "1u", "cfgt5_463"), // Second tank fuel level, %
    param(19, "2u", "cfgt5_464"), // Vehicle weight, kg
    param(20, "1b", "cfgt5_465"), // Special equipment state
    bit(21, "cfgt5_466"), bit(22, "cfgt5_467"), bit(23, "cfgt5_468"), bit(24, "cfgt5_469"), bit(25, "cfgt5_470"),
    bit(26, "cfgt5_471"), bit(27, "cfgt5_472"), bit(28, "cfgt5_476"),
    param(29, "2b", "cfgt5_473"), // Special equipment alarms
};
static_assert(isWellFormed(kRows_BC), "BC: numbers ascend, bits fit their set");

// AC: additional parameters of the vehicle CAN bus.
// In the four tyre sets (115, 124, 133, 142) the left wheel uses bits 1-3 and
// the right wheel bits 5-7; bit 4 has no number.
constexpr Row kRows_AC[] = {
    param(1, "2b", "cfgt5_147"), // Vehicle state
    bit(2, "cfgt5_148"), bit(3, "cfgt5_149"), bit(4, "cfgt5_150"), bit(5, "cfgt5_151"), bit(6, "cfgt5_152"),
    bit(7, "cfgt5_153"), bit(8, "cfgt5_154"), bit(9, "cfgt5_155"), bit(10, "cfgt5_156"), bit(11, "cfgt5_157"),
    bit(12, "cfgt5_158"), bit(13, "cfgt5_159"), bit(14, "cfgt5_160"), bit(15, "cfgt5_161"), bit(16, "cfgt5_162"),
    param(18, "2b", "cfgt5_163"), // Doors
    bit(19, "cfgt5_164"), bit(20, "cfgt5_165"), bit(21, "cfgt5_166"), bit(22, "cfgt5_167"), bit(23, "cfgt5_168"),
    bit(24, "cfgt5_169"), bit(25, "cfgt5_170"), bit(26, "cfgt5_171"), bit(27, "cfgt5_172"),
    param(35, "2b", "cfgt5_173"), // Lights
    bit(36, "cfgt5_174"), bit(37, "cfgt5_175"), bit(38, "cfgt5_176"), bit(39, "cfgt5_177"), bit(40, "cfgt5_178"),
    bit(41, "cfgt5_179"), bit(42, "cfgt5_180"), bit(43, "cfgt5_181"), bit(44, "cfgt5_182"), bit(45, "cfgt5_183"),
    bit(46, "cfgt5_184"), bit(47, "cfgt5_185"), bit(48, "cfgt5_186"), bit(49, "cfgt5_187"),
    param(52, "1b", "cfgt5_188"), // Dashboard warning lamps 1
    bit(53, "cfgt5_189"), bit(54, "cfgt5_190"), bit(55, "cfgt5_191"), bit(56, "cfgt5_192"), bit(57, "cfgt5_193"),
    bit(58, "cfgt5_194"), bit(59, "cfgt5_195"), bit(60, "cfgt5_196"),
    param(61, "1b", "cfgt5_197"), // Dashboard warning lamps 2
    bit(62, "cfgt5_198"), bit(63, "cfgt5_199"), bit(64, "cfgt5_200"), bit(65, "cfgt5_201"), bit(66, "cfgt5_202"),
    bit(67, "cfgt5_203"), bit(68, "cfgt5_204"), bit(69, "cfgt5_205"),
    param(70, "1b", "cfgt5_206"), // Climate and comfort
    bit(71, "cfgt5_207"), bit(72, "cfgt5_208"), bit(73, "cfgt5_209"), bit(74, "cfgt5_210"), bit(75, "cfgt5_211"),
    bit(76, "cfgt5_212"), bit(77, "cfgt5_213"), param(79, "1b", "cfgt5_214"), // Security system
    bit(80, "cfgt5_215"), bit(81, "cfgt5_216"), bit(82, "cfgt5_217"), bit(83, "cfgt5_218"), bit(84, "cfgt5_219"),
    bit(85, "cfgt5_220"), bit(86, "cfgt5_221"), bit(87, "cfgt5_222"), param(88, "1b", "cfgt5_223"), // Transmission
    bit(89, "cfgt5_224"), bit(90, "cfgt5_225"), bit(91, "cfgt5_226"), bit(92, "cfgt5_227"), bit(93, "cfgt5_228"),
    bit(94, "cfgt5_229"), bit(95, "cfgt5_230"), bit(96, "cfgt5_231"), param(97, "1b", "cfgt5_232"), // Electric drive
    bit(98, "cfgt5_233"), bit(99, "cfgt5_234"), bit(100, "cfgt5_235"), bit(101, "cfgt5_236"), bit(102, "cfgt5_237"),
    bit(103, "cfgt5_238"), bit(104, "cfgt5_239"), param(106, "1b", "cfgt5_240"), // Tachograph
    bit(107, "cfgt5_241"), bit(108, "cfgt5_242"), param(115, "1b", "cfgt5_243"), // Axle 1 tyres
    bit(116, "cfgt5_244"), bit(117, "cfgt5_245"), bit(118, "cfgt5_246"), bit(120, "cfgt5_247"), bit(121, "cfgt5_248"),
    bit(122, "cfgt5_249"), param(124, "1b", "cfgt5_250"), // Axle 2 tyres
    bit(125, "cfgt5_251"), bit(126, "cfgt5_252"), bit(127, "cfgt5_253"), bit(129, "cfgt5_254"), bit(130, "cfgt5_255"),
    bit(131, "cfgt5_256"), param(133, "1b", "cfgt5_257"), // Axle 3 tyres
    bit(134, "cfgt5_258"), bit(135, "cfgt5_259"), bit(136, "cfgt5_260"), bit(138, "cfgt5_261"), bit(139, "cfgt5_262"),
    bit(140, "cfgt5_263"), param(142, "1b", "cfgt5_264"), // Axle 4 tyres
    bit(143, "cfgt5_265"), bit(144, "cfgt5_266"), bit(145, "cfgt5_267"), bit(147, "cfgt5_268"), bit(148, "cfgt5_269"),
    bit(149, "cfgt5_270"), param(151, "2u", "cfgt5_271"), // Engine speed, rpm
    param(152, "4u", "cfgt5_272"), // Total vehicle distance, km
    param(153, "4u", "cfgt5_273"), // Total fuel used, l
    param(154, "4u", "cfgt5_274"), // Total engine hours, h
    param(155, "4u", "cfgt5_275"), // Trip distance, km
    param(156, "2u", "cfgt5_276"), // Fuel level, l
    param(157, "2u", "cfgt5_277"), // Fuel level, %
    param(158, "1u", "cfgt5_278"), // Accelerator pedal position, %
    param(159, "1s", "cfgt5_279"), // Engine coolant temperature, °C
    param(160, "2u", "cfgt5_280"), // Vehicle speed, km/h
    param(161, "2u", "cfgt5_281"), // Fuel rate, l/h
    param(162, "2u", "cfgt5_282"), // Supply voltage, mV
    param(163, "2u", "cfgt5_283"), // Axle 1 load, kg
    param(164, "2u", "cfgt5_284"), // Axle 2 load, kg
    param(165, "1s", "cfgt5_285"), // Ambient air temperature, °C
    param(166, "2u", "cfgt5_286"), // Axle 3 load, kg
    param(167, "2s", "cfgt5_287"), // Engine oil temperature, °C
    param(168, "2s", "cfgt5_288"), // Intake air temperature, °C
    param(169, "2u", "cfgt5_289"), // Axle 4 load, kg
    param(170, "2u", "cfgt5_290"), // Axle 5 load, kg
    param(171, "2u", "cfgt5_291"), // Engine oil pressure, kPa
    param(172, "2u", "cfgt5_292"), // Boost pressure, kPa
    param(173, "2u", "cfgt5_293"), // Brake circuit 1 air pressure, kPa
    param(174, "2u", "cfgt5_294"), // Brake circuit 2 air pressure, kPa
    param(175, "1u", "cfgt5_295"), // Engine load, %
    param(176, "1s", "cfgt5_296"), // Cabin temperature, °C
    param(177, "2u", "cfgt5_297"), // Distance to next service, km
    param(178, "2u", "cfgt5_298"), // Engine hours to next service, h
    param(179, "2u", "cfgt5_299"), // AdBlue level, l
    param(180, "4u", "cfgt5_300"), // Total AdBlue used, l
    param(181, "4u", "cfgt5_301"), // Total engine idle hours, h
    param(182, "4u", "cfgt5_302"), // Total idle fuel used, l
    param(183, "4u", "cfgt5_303"), // Total PTO hours, h
    param(184, "4u", "cfgt5_304"), // Total PTO fuel used, l
    param(185, "4u", "cfgt5_305"), // Total distance on cruise control, km
    param(186, "4u", "cfgt5_306"), // Total brake applications
    param(187, "4u", "cfgt5_307"), // Total engine starts
    param(188, "4u", "cfgt5_308"), // Total time over engine speed limit, s
    param(189, "2u", "cfgt5_309"), // Engine torque, N·m
    param(190, "2u", "cfgt5_310"), // Vehicle weight, kg
    param(191, "4u", "cfgt5_311"), // Total driving time, h
    param(192, "4u", "cfgt5_312"), // Total distance on electric drive, km
    param(193, "4u", "cfgt5_313"), // Total energy used, kWh
    param(194, "4u", "cfgt5_314"), // Total energy recovered, kWh
    param(195, "2u", "cfgt5_315"), // Traction battery state of charge, %
    param(196, "2u", "cfgt5_316"), // Traction battery voltage, V
    param(197, "4u", "cfgt5_317"), // Remaining range, km
    param(198, "4u", "cfgt5_318"), // Total charging energy, kWh
    param(199, "4u", "cfgt5_319"), // Traction battery charge cycles
    param(200, "2u", "cfgt5_320"), // Charging current, A
    param(201, "2u", "cfgt5_321"), // Traction motor speed, rpm
    param(202, "2u", "cfgt5_322"), // Traction motor current, A
    param(203, "2u", "cfgt5_323"), // Tyre pressure, axle 1 left, kPa
    param(204, "2u", "cfgt5_324"), // Tyre pressure, axle 1 right, kPa
    param(205, "2u", "cfgt5_325"), // Tyre pressure, axle 2 left, kPa
    param(206, "2u", "cfgt5_326"), // Tyre pressure, axle 2 right, kPa
    param(207, "2u", "cfgt5_327"), // Second tank fuel level, l
    param(208, "4u", "cfgt5_328"), // Total vehicle distance (high resolution), m
    param(209, "4u", "cfgt5_329"), // Total fuel used (high resolution), ml
    param(210, "4u", "cfgt5_330"), // Trip fuel used, l
    param(211, "4u", "cfgt5_331"), // Total engine revolutions, thousands
    param(212, "4u", "cfgt5_440"), // Total distance with trailer, km
    param(213, "2s", "cfgt5_441"), // Transmission oil temperature, °C
    param(231, "1u", "cfgt5_332"), // Current gear
    param(232, "2u", "cfgt5_333"), // Cruise control set speed, km/h
    param(233, "2u", "cfgt5_334"), // Fuel pressure, kPa
    param(234, "2s", "cfgt5_335"), // Actual engine torque, %
    param(235, "2s", "cfgt5_336"), // Retarder torque, %
    param(236, "4u", "cfgt5_337"), // Driver 1 continuous driving time, min
    param(237, "4u", "cfgt5_338"), // Driver 2 continuous driving time, min
    param(238, "2s", "cfgt5_339"), // Steering wheel angle, °
    param(239, "4u", "cfgt5_340"), // Driver 1 daily driving time, min
    param(240, "2u", "cfgt5_341"), // Distance to empty, km
    param(241, "1u", "cfgt5_429"), // Driver 1 activity
    param(242, "1u", "cfgt5_430"), // Driver 2 activity
    param(243, "2u", "cfgt5_431"), // Tyre pressure, axle 3 left, kPa
    param(244, "2u", "cfgt5_432"), // Tyre pressure, axle 3 right, kPa
    param(245, "2u", "cfgt5_433"), // Tyre pressure, axle 4 left, kPa
    param(246, "2u", "cfgt5_434"), // Tyre pressure, axle 4 right, kPa
    param(247, "2u", "cfgt5_435"), // Hydraulic pressure, bar
    param(248, "2u", "cfgt5_436"), // Crane hook load, kg
    param(249, "2u", "cfgt5_437"), // Mixer drum speed, rpm
    param(250, "1s", "cfgt5_438"), // Body temperature, °C
    param(251, "2u", "cfgt5_439"), // PTO shaft speed, rpm
    param(252, "4u", "cfgt5_442"), // Total mixer drum revolutions
    param(253, "4u", "cfgt5_443"), // Total hydraulic pump hours, h
    param(254, "1s", "cfgt5_444"), // Fuel temperature, °C
    param(255, "1s", "cfgt5_445"), // Hydraulic oil temperature, °C
};
static_assert(isWellFormed(kRows_AC), "AC: numbers ascend, bits fit their set");

// CO: passenger counter.
// The bit sets 14 and 16 are reported whole; their bits have no numbers (the
// next entry follows at once), and so have no descriptors.
constexpr Row kRows_CO[] = {
    param(1, "4u", "cfgt5_367"), // Total passengers in
    param(2, "2u", "cfgt5_368"), // Passengers in, door 1
    param(3, "2u", "cfgt5_369"), // Passengers out, door 1
    param(4, "2u", "cfgt5_370"), // Passengers in, door 2
    param(5, "2u", "cfgt5_371"), // Passengers out, door 2
    param(6, "2u", "cfgt5_372"), // Passengers in, door 3
    param(7, "2u", "cfgt5_373"), // Passengers out, door 3
    param(8, "1u", "cfgt5_374"), // Passengers on board
    param(9, "2u", "cfgt5_375"), // Passengers in, door 4
    param(10, "2u", "cfgt5_376"), // Passengers out, door 4
    param(11, "4u", "cfgt5_377"), // Total passengers out
    param(12, "4u", "cfgt5_378"), // Total door openings
    param(13, "4u", "cfgt5_379"), // Counter operating time, h
    param(14, "4b", "cfgt5_380"), // Counting sensor faults
    param(15, "1u", "cfgt5_381"), // Counting sensors connected
    param(16, "1b", "cfgt5_382"), // Door states
    param(17, "2u", "cfgt5_474"), // Passengers in, door 5
    param(18, "2u", "cfgt5_475"), // Passengers out, door 5
};
static_assert(isWellFormed(kRows_CO), "CO: numbers ascend, bits fit their set");

// RC: refrigeration unit controller. The 1b entries are reported whole, as in CO.
constexpr Row kRows_RC[] = {
    param(1, "1b", "cfgt6_165"), // Refrigeration unit state
    param(2, "1u", "cfgt6_166"), // Refrigeration unit mode
    param(3, "1b", "cfgt6_167"), // Compartment 1 state
    param(4, "1u", "cfgt6_168"), // Compartment 1 mode
    param(5, "1b", "cfgt6_169"), // Compartment 2 state
    param(6, "1u", "cfgt6_170"), // Compartment 2 mode
    param(7, "1b", "cfgt6_171"), // Compartment 3 state
    param(8, "1u", "cfgt6_172"), // Compartment 3 mode
    param(9, "1b", "cfgt6_173"), // Refrigeration unit alarms
    param(10, "1b", "cfgt6_174"), // Compartment door sensors
    param(11, "2s", "cfgt6_175"), // Compartment 1 set point, °C
    param(12, "2s", "cfgt6_176"), // Compartment 1 return air temperature, °C
    param(13, "2s", "cfgt6_177"), // Compartment 1 supply air temperature, °C
    param(14, "2s", "cfgt6_178"), // Compartment 1 evaporator coil temperature, °C
    param(15, "2s", "cfgt6_179"), // Compartment 2 set point, °C
    param(16, "2s", "cfgt6_180"), // Compartment 2 return air temperature, °C
    param(17, "2s", "cfgt6_181"), // Compartment 2 supply air temperature, °C
    param(18, "2s", "cfgt6_182"), // Compartment 2 evaporator coil temperature, °C
    param(19, "2s", "cfgt6_183"), // Compartment 3 set point, °C
    param(20, "2s", "cfgt6_184"), // Compartment 3 return air temperature, °C
    param(21, "2s", "cfgt6_185"), // Compartment 3 supply air temperature, °C
    param(22, "2s", "cfgt6_186"), // Compartment 3 evaporator coil temperature, °C
    param(23, "2s", "cfgt6_187"), // Ambient air temperature, °C
    param(24, "2s", "cfgt6_188"), // Unit engine coolant temperature, °C
    param(25, "2s", "cfgt6_189"), // Condenser coil temperature, °C
    param(26, "2s", "cfgt6_190"), // Compressor discharge temperature, °C
    param(27, "2s", "cfgt6_191"), // Suction pressure, kPa
    param(28, "2s", "cfgt6_192"), // Discharge pressure, kPa
    param(29, "2s", "cfgt6_193"), // Unit battery voltage, 0.1 V
    param(30, "2s", "cfgt6_194"), // Unit battery current, 0.1 A
    param(31, "2s", "cfgt6_195"), // Temperature probe 1, °C
    param(32, "2s", "cfgt6_196"), // Temperature probe 2, °C
    param(33, "2s", "cfgt6_197"), // Temperature probe 3, °C
    param(34, "2s", "cfgt6_198"), // Temperature probe 4, °C
    param(35, "4u", "cfgt6_199"), // Unit diesel engine hours, h
    param(36, "4u", "cfgt6_200"), // Unit electric standby hours, h
    param(37, "2s", "cfgt6_225"), // Cargo probe temperature, °C
};
static_assert(isWellFormed(kRows_RC), "RC: numbers ascend, bits fit their set");

// Cmd: commands the terminal can send on the CAN bus. They are not values of
// the record; "1u" stands for the one command byte so that every entry has a type.
constexpr Row kRows_Cmd[] = {
    param(1, "1u", "cfgt5_342"), // Lock the doors
    param(2, "1u", "cfgt5_343"), // Unlock the doors
    param(3, "1u", "cfgt5_344"), // Open the boot
    param(4, "1u", "cfgt5_345"), // Close the windows
    param(5, "1u", "cfgt5_346"), // Flash the headlights
    param(6, "1u", "cfgt5_347"), // Sound the horn
    param(7, "1u", "cfgt5_348"), // Start the engine
    param(8, "1u", "cfgt5_349"), // Stop the engine
    param(9, "1u", "cfgt5_350"), // Block engine start
    param(10, "1u", "cfgt5_351"), // Allow engine start
};
static_assert(isWellFormed(kRows_Cmd), "Cmd: numbers ascend");

// AX: the refrigeration unit's auxiliary controller. Captions are composed of
// two texts: "%1, %2" (what, then unit or compartment) and "%1, 2 %2" (what,
// in the second compartment). The part cfgt6_208 is written to follow "2 "
// ("отсек" / "nd compartment"). The bit sets 14 and 15 are reported whole.
enum class Compose {
    Key, // the key's text alone
    Pair, // "%1, %2"
    Second, // "%1, 2 %2"
};

struct AxRow
{
    int nNum;
    const char* lpType;
    const char* lpKey;
    const char* lpPartKey; // %2; nullptr with Compose::Key
    Compose compose;
};

constexpr AxRow kRows_AX[] = {
    {1, "2u", "cfgt6_206", "abbr_001", Compose::Pair}, // unit engine hours, h
    {2, "1u", "cfgt6_207", "abbr_008", Compose::Pair}, // unit fuel tank level, %
    {3, "2s", "cfgt6_211", "cfgt6_201", Compose::Pair}, // set point, 1st compartment
    {4, "2s", "cfgt6_212", "cfgt6_201", Compose::Pair}, // return air temperature, 1st ...
    {5, "2s", "cfgt6_213", "cfgt6_201", Compose::Pair}, // supply air temperature, 1st ...
    {6, "1u", "cfgt6_214", "cfgt6_201", Compose::Pair}, // operating mode, 1st ...
    {7, "2s", "cfgt6_211", "cfgt6_208", Compose::Second}, // set point, 2nd compartment
    {8, "2s", "cfgt6_212", "cfgt6_208", Compose::Second}, {9, "2s", "cfgt6_213", "cfgt6_208", Compose::Second},
    {10, "1u", "cfgt6_214", "cfgt6_208", Compose::Second},
    {11, "2s", "cfgt6_215", "abbr_017", Compose::Pair}, // ambient air temperature, °C
    {12, "2u", "cfgt6_216", "abbr_012", Compose::Pair}, // unit battery voltage, V
    {13, "4u", "cfgt6_217", "abbr_001", Compose::Pair}, // unit electric standby hours, h
    {14, "2b", "cfgt6_209", nullptr, Compose::Key}, // refrigeration unit alarms
    {15, "2b", "cfgt6_210", nullptr, Compose::Key}, // refrigeration unit state
};

template <std::size_t N>
constexpr bool isWellFormed(const AxRow (&rows)[N])
{
    int nPrev = 0;
    for (const AxRow& row : rows) {
        if (row.nNum <= nPrev || row.nNum > 255 || !row.lpKey || typeWidth(row.lpType) == 0)
            return false;
        if ((row.compose == Compose::Key) != (row.lpPartKey == nullptr))
            return false;
        nPrev = row.nNum;
    }
    return true;
}
static_assert(isWellFormed(kRows_AX), "AX: numbers ascend, composed rows name both parts");

// Numbering of older terminal firmware. A run says that the old numbers
// nFirst..nLast are today's numbers from nCurrent on; an old number in no run
// was unknown to that firmware, and a run's number that is not in today's list
// is dropped.
//   3.16: SC had no warning-lamp set (38); its lights set sat at 38 with bits
//         39-46 and the service distance at 47. AC ended at 211 and had today's
//         231-240 at 214-223. Of the commands it knew 1-4, and today's 7 and 8
//         as 5 and 6.
//   3.20: the warning-lamp set had only bits 39-61; the lights set sat at 62
//         with bits 63-70 and the service distance at 71. AC ended at 251. It
//         knew commands 1-8.
struct Renumber
{
    int nFirst;
    int nLast;
    int nCurrent;
};

template <std::size_t N>
constexpr bool isWellFormed(const Renumber (&runs)[N])
{
    int nPrev = 0;
    for (const Renumber& run : runs) {
        if (run.nFirst <= nPrev || run.nLast < run.nFirst || run.nCurrent < 1
            || run.nCurrent + (run.nLast - run.nFirst) > 255)
            return false;
        nPrev = run.nLast;
    }
    return true;
}

constexpr Renumber kRenumber_SC_316[] = {{1, 36, 1}, {38, 46, 71}, {47, 47, 80}};
constexpr Renumber kRenumber_SC_320[] = {{1, 61, 1}, {62, 70, 71}, {71, 71, 80}};
constexpr Renumber kRenumber_AC_316[] = {{1, 211, 1}, {214, 223, 231}};
constexpr Renumber kRenumber_AC_320[] = {{1, 251, 1}};
constexpr Renumber kRenumber_Cmd_316[] = {{1, 4, 1}, {5, 6, 7}};
constexpr Renumber kRenumber_Cmd_320[] = {{1, 8, 1}};
static_assert(isWellFormed(kRenumber_SC_316) && isWellFormed(kRenumber_SC_320) && isWellFormed(kRenumber_AC_316)
        && isWellFormed(kRenumber_AC_320) && isWellFormed(kRenumber_Cmd_316) && isWellFormed(kRenumber_Cmd_320),
    "firmware runs ascend without overlap");

} // namespace zor_catalogue

#endif
