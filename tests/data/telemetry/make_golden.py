#!/usr/bin/env python3
"""Writes the golden telemetry data of this directory from fields.txt.

The record bytes are random (seeded) except where a text rule needs a
readable value (floats, 64-bit coordinates) or a case plants a sentinel; the
expected texts are computed here from the rules, never taken from the
decoder. Output, for every case NAME:
  cases.txt     NAME VERSION MASK HEX   (one line per case)
  NAME.keys     expected `zor-tool decode --lang keys` lines ("?" = unchecked cell)
and archive[_v1|_v2].bin / .csv: records of version 3 (1, 2) back to back
and the expected CSV.
Run it again after editing fields.txt and review the diff."""

import datetime
import os
import random
import struct

HERE = os.path.dirname(os.path.abspath(__file__))
FMT = {'u8': '<B', 'i8': '<b', 'u16': '<H', 'i16': '<h', 'u32': '<I', 'i32': '<i',
       'u64': '<Q', 'i64': '<q', 'f32': '<f'}
LAST_FIELD = {1: 69, 2: 122, 3: 255}


def parse_column(tok, base=0):
    place, _, rule = tok.partition('=')
    off, typ = place.split(':')
    shift = bits = None
    if '.' in typ:
        typ, shift, bits = typ.split('.')
        shift, bits = int(shift), int(bits)
    return {'off': int(off) + base, 'type': typ, 'shift': shift, 'bits': bits, 'rule': rule or 'd'}


def parse_columns(toks, base=0):
    cols, i = [], 0
    while i < len(toks):
        if toks[i] == 'F':
            off, typ, bitlist = toks[i + 1].split(':')
            cols += [parse_column('%s:%s.%s.1' % (off, typ, b), base) for b in bitlist.split(',')]
            i += 2
        elif toks[i] == 'R':
            count, step = int(toks[i + 1]), int(toks[i + 2])
            rest = toks[i + 3:]
            # R takes the columns up to the end, except a trailing column whose
            # offset lies past the repeated block (LBS: the time after the cells).
            body = [t for t in rest if int(t.split(':')[0]) < step or step == 0]
            tail = rest[len(body):]
            for k in range(count):
                cols += parse_columns(body, base + k * step)
            cols += parse_columns(tail, base)
            return cols
        else:
            cols.append(parse_column(toks[i], base))
            i += 1
    return cols


def load_fields():
    fields = {}
    for line in open(os.path.join(HERE, 'fields.txt')):
        if not line.strip() or line.startswith('#'):
            continue
        toks = line.split()
        n, name, width = int(toks[0]), toks[1], int(toks[2])
        fields[n] = {'name': name, 'width': width, 'cols': parse_columns(toks[3:])}
    return fields


def raw(b, col):
    v = struct.unpack_from(FMT[col['type']], b, col['off'])[0]
    if col['shift'] is not None:
        v = (v >> col['shift']) & ((1 << col['bits']) - 1)
    return v


def utc(v, fmt):
    t = datetime.datetime(1970, 1, 1) + datetime.timedelta(seconds=v)
    return fmt.format(t=t)


def coord(v, per_degree, per_minute, decimals):
    deg = int(v / per_degree) if abs(v) < 2 ** 52 else (abs(v) // per_degree) * (1 if v >= 0 else -1)
    m = abs(v - deg * per_degree)
    sign = '-' if v < 0 else ''
    return "%d %s%d.%0*d'" % (deg, sign, m // per_minute, decimals, m % per_minute)


def text(rule, v):
    name, _, arg = rule.partition(':')
    if name == 'd':
        return str(v)
    if name == '?':
        return '?'
    if name == 'unit':
        return '%d %s' % (v, arg)
    if name == 'pct':
        return '%d %%' % v
    if name == 'div':
        parts = arg.split(':')
        s = '%.*f' % (int(parts[1]), v / int(parts[0]))
        return s + (' ' + parts[2] if len(parts) > 2 else '')
    if name in ('f1', 'f2', 'f2neg'):
        if name == 'f2neg' and v < 0:
            return 'n/a'
        s = '%.*f' % (1 if name == 'f1' else 2, v)
        return s + (' ' + arg if arg else '')
    if name == 'time':
        return utc(v, '{t.day:02d}.{t.month:02d}.{t.year} {t.hour}:{t.minute:02d}:{t.second:02d}')
    if name == 'lbstime':
        return utc(v, '{t.hour:02d}:{t.minute:02d}:{t.second:02d} {t.day:02d}.{t.month:02d}.{t.year}')
    if name == 'msec':
        return '.%d' % v
    if name == 'gsm':
        return 'tmikte_027' if v == 99 else str(int(v * 3.22))
    if name == 'sim':
        return '2' if v else '1'
    if name == 'coord':
        return coord(v, 600000, 10000, 4)
    if name == 'coord7':
        return coord(v, 600000000, 10000000, 7)
    if name == 'alt':
        return str(int(v / 10))
    if name == 'temp8':
        return '' if v == -128 else '%d abbr_017' % v
    if name == 'tyretemp':
        return 'n/a' if v == -127 else str(v)
    if name == 'canpct':
        return 'n/a' if v & 0x7FFF == 0x7FFF else ('%d %%' % (v & 0x7FFF) if v & 0x8000 else '')
    if name == 'canlitres':
        return 'n/a' if v & 0x7FFF == 0x7FFF else ('' if v & 0x8000 else '%.1f abbr_026' % (v / 10))
    if name == 'service':
        return 'n/a' if v == 0xFFFF else '%d abbr_023' % (v * 5)
    if name == 'canspeed':
        return 'n/a' if v == 255 else '%d abbr_024' % v
    if name == 'dbm':
        return '%d dBm' % v
    if name == 'accel':
        return 'n/a' if v == -32768 else '%.3f' % (v / 1000) + (' ' + arg if arg else '')
    if name == 'hptemp':
        return 'n/a' if v == -32768 else '%.2f abbr_017' % (v / 20)
    if name == 'mul1.5':
        return '%.1f' % (v * 1.5)
    raise ValueError('unknown rule ' + rule)


def make_values(fields, rng, fill=None):
    """Value bytes of every field: random (or one fill byte), with readable
    floats and coordinates."""
    values = {}
    for n, f in fields.items():
        b = bytearray(rng.getrandbits(8) if fill is None else fill for _ in range(f['width']))
        for c in f['cols']:
            if c['type'] == 'f32':
                struct.pack_into('<f', b, c['off'], rng.randint(-40000, 400000) / 2)
            if c['rule'] == 'coord7':
                struct.pack_into('<q', b, c['off'], rng.randint(-108 * 10 ** 9, 108 * 10 ** 9))
        values[n] = b
    return values


def plant_sentinels(fields, values):
    by_name = {f['name']: n for n, f in fields.items()}
    def put(name, fmt, off, v):
        struct.pack_into(fmt, values[by_name[name]], off, v)
    for k in range(1, 9):
        put('Temp%d' % k, '<b', 0, -128)
    put('GSM', '<B', 0, 99)
    put('CanFuelLevel', '<H', 0, 0x7FFF)
    put('CanLevelFiltr', '<H', 0, 0xFFFF)
    put('CanFuelConsumption', '<f', 0, -1.0)
    put('CanFullRun', '<f', 0, -0.5)
    put('CanSpeed', '<B', 0, 255)
    put('CanTimeTO', '<H', 0, 0xFFFF)
    for k in range(0, 6, 3):
        put('Tires1_2', '<B', k + 2, 0x81)
    for k in range(0, 6, 2):
        put('AccelLinear', '<h', k, -32768)
    put('AccelAngular', '<h', 2, -32768)
    for k in range(1, 5):
        put('HPrecisionTemp%d' % k, '<h', 0, -32768)
    put('Latitude', '<i', 0, 33507407)
    put('Longitude', '<i', 0, -33507407)
    put('Altitude', '<i', 0, -15)


def plant_edges(fields, values):
    by_name = {f['name']: n for n, f in fields.items()}
    def put(name, fmt, off, v):
        struct.pack_into(fmt, values[by_name[name]], off, v)
    put('Latitude', '<i', 0, -5000)
    put('Longitude', '<i', 0, 600000 * 37)
    put('Altitude', '<i', 0, 1234)
    put('NaviCoord', '<q', 0, 33507407123)
    put('NaviCoord', '<q', 8, -600000001)
    put('User8Byte1', '<Q', 0, 2 ** 32)
    put('User8Byte2', '<Q', 0, 2 ** 64 - 1)
    put('MiliSec', '<H', 0, 5)
    put('CanFuelLevel', '<H', 0, 0x8000 | 0x7FFE)
    put('CanLevelFiltr', '<H', 0, 0)
    put('Time', '<I', 0, 2 ** 32 - 1)


def present(mask, n, version):
    return n <= LAST_FIELD[version] and n <= len(mask) and mask[n - 1] == '1'


def record(fields, values, mask, version):
    return b''.join(bytes(values[n]) for n in sorted(fields) if present(mask, n, version))


def cells(fields, values, n):
    return [text(c['rule'], raw(values[n], c)) for c in fields[n]['cols']]


def keys_lines(fields, values, mask, version):
    def texts(n):
        # The temperatures of RS-485 sensors 1-6 follow the presence of the
        # sensors' level fields 38-43, not their own.
        if 78 <= n <= 83 and not present(mask, n - 40, version):
            return ['n/a']
        return cells(fields, values, n)
    return ['%d;%s;%s' % (n, fields[n]['name'], ';'.join(texts(n)))
            for n in sorted(fields) if present(mask, n, version)]


def csv_line(fields, values, mask, version=3):
    out = []
    for n in sorted(fields):
        if not present(mask, n, version):
            continue
        for t in cells(fields, values, n):
            if n == 3:
                t += text('msec', raw(values[200], fields[200]['cols'][0])) if present(mask, 200, version) else 'n/a'
            out.append('?' if t == '?' else '="%s"' % t)
    return ';'.join(out) + ';\r\n'


def main():
    fields = load_fields()
    full = '1' * 255
    rng = random.Random(17)
    sparse = ''.join(rng.choice('01') for _ in range(255))
    cases = []
    for name, version, mask, fill in [('v3_full_a', 3, full, None), ('v3_full_b', 3, full, None),
                                      ('v3_sparse', 3, sparse, None), ('v3_all_ff', 3, full, 0xFF),
                                      ('v3_all_80', 3, full, 0x80), ('v3_sentinels', 3, full, None),
                                      ('v3_edges', 3, full, None),
                                      ('v2_full', 2, full, None), ('v1_full', 1, full, None),
                                      ('v1_sparse', 1, sparse, None)]:
        values = make_values(fields, rng, fill)
        if name == 'v3_sentinels':
            plant_sentinels(fields, values)
        if name == 'v3_edges':
            plant_edges(fields, values)
        cases.append('%s %d %s %s' % (name, version, mask, record(fields, values, mask, version).hex()))
        with open(os.path.join(HERE, name + '.keys'), 'w') as f:
            f.write('\n'.join(keys_lines(fields, values, mask, version)) + '\n')
    with open(os.path.join(HERE, 'cases.txt'), 'w') as f:
        f.write('\n'.join(cases) + '\n')

    # An archive of records of one field set through the CSV export.
    columns = sum(len(fields[n]['cols']) for n in fields)
    data, lines = b'', ['?;' * columns + '\r\n']
    for k in range(5):
        values = make_values(fields, rng)
        if k == 2:
            plant_sentinels(fields, values)
        data += record(fields, values, full, 3)
        lines.append(csv_line(fields, values, full))
    with open(os.path.join(HERE, 'archive.bin'), 'wb') as f:
        f.write(data)
    with open(os.path.join(HERE, 'archive.csv'), 'w', newline='') as f:
        f.write(''.join(lines))

    # Versions 1 and 2 through the CSV export: the table cut after field 69 / 122.
    for version in (1, 2):
        columns = sum(len(fields[n]['cols']) for n in fields if n <= LAST_FIELD[version])
        data, lines = b'', ['?;' * columns + '\r\n']
        for k in range(2):
            values = make_values(fields, rng)
            data += record(fields, values, full, version)
            lines.append(csv_line(fields, values, full, version))
        with open(os.path.join(HERE, 'archive_v%d.bin' % version), 'wb') as f:
            f.write(data)
        with open(os.path.join(HERE, 'archive_v%d.csv' % version), 'w', newline='') as f:
            f.write(''.join(lines))


if __name__ == '__main__':
    main()
