#!/usr/bin/env python3
"""Writes a synthetic drive archive and what a summary of it must say.

Written from the rules of the records and of the drive summary, not from
the program: record layout (fields in number order, little-endian),
coordinates in 1/10000 angular minute, altitude in decimetres, Speed and
Mileage f32, Motochas in seconds, Module1 bit 7 engine, StateNGauge bit 1
valid fix.

The drive (one record a minute from 2024-05-01 06:00 UTC):
  20 min parked, engine off, speed noise below 5 km/h       stop 1
  40 min trip 1 at 60 km/h to the north-east, with a 2-minute halt
     (engine off) in its middle: shorter than 5 min, stays in the trip
  30 min parked; a refuel of +300 units 10 minutes in      stop 2, refuel
  30 min trip 2 to the east; one record without a fix (coordinates 0,0)
     and one fix 500 km away (two gaps: the jump there and back)
  40 min parked; a drain of -150 units 20 minutes in       stop 3, drain
The fuel level (RS485_1) has uniform noise of +-3 units, one spike of +40
on a single record, and falls by 0.5 units a minute while the engine runs.

Output: drive.bin (records), drive.expected.json (the figures), and
drive_bare.bin: 10 records with only NumPage and Speed (no times, no
coordinates): its summary must say what it could not compute; and
drive_back.bin: 6 fixes 0.01 degree of latitude apart (the drive mask),
the fourth stamped 2 minutes before the third: a gap, its step not added.
Run again only after changing the rules; review the diff."""

import json
import math
import os
import random
import struct

HERE = os.path.dirname(os.path.abspath(__file__))
T0 = 1714543200  # 2024-05-01T06:00:00Z
FIELDS = [(1, '<I'), (2, '<H'), (3, '<I'), (5, '<B'), (8, '<B'), (10, '<i'), (11, '<i'), (12, '<i'),
          (13, '<f'), (15, '<f'), (37, '<I'), (38, '<H')]
R = 6371.0088


def mask_text(numbers):
    return ''.join('1' if n in numbers else '0' for n in range(1, 256))


def haversine(a, b):
    la1, lo1, la2, lo2 = map(math.radians, (a[0], a[1], b[0], b[1]))
    h = math.sin((la2 - la1) / 2) ** 2 + math.cos(la1) * math.cos(la2) * math.sin((lo2 - lo1) / 2) ** 2
    return 2 * R * math.asin(min(1.0, math.sqrt(h)))


def to_units(deg):
    return int(round(deg * 600000))


def iso(t):
    import datetime
    return datetime.datetime.utcfromtimestamp(t).strftime('%Y-%m-%dT%H:%M:%SZ')


def build():
    rnd = random.Random(25)
    recs = []  # dicts: t, engine, speed, lat, lon, fix, level(true)
    lat, lon = 55.75, 37.61
    level = 1000.0
    t = T0

    def add(engine, speed, fix=True, at=None):
        nonlocal t
        p = at or (lat, lon)
        recs.append({'t': t, 'engine': engine, 'speed': speed, 'lat': p[0], 'lon': p[1], 'fix': fix,
                     'level': level})
        t += 60

    def drive(minutes, dlat, dlon, halt_at=None):
        nonlocal lat, lon, level
        for m in range(minutes):
            if halt_at is not None and halt_at <= m < halt_at + 2:
                add(0, 0.0)
                continue
            lat += dlat
            lon += dlon
            level -= 0.5
            add(1, 60.0 + rnd.uniform(-3, 3))

    def park(minutes, jump_at=None, jump=0.0):
        nonlocal level
        for m in range(minutes):
            if jump_at is not None and m == jump_at:
                level += jump
            add(0, rnd.uniform(0, 2.0))

    park(20)
    drive(40, 0.006, 0.01, halt_at=20)
    park(30, jump_at=10, jump=300)
    first_trip2 = len(recs)
    drive(30, 0.0, 0.016)
    # record 15 of trip 2 loses its fix, record 20 is a fix 500 km away
    recs[first_trip2 + 15].update(fix=False, lat=0.0, lon=0.0)
    far = recs[first_trip2 + 20]
    far.update(lat=far['lat'] + 4.5)
    park(40, jump_at=20, jump=-150)
    return recs


def encode(recs, rnd):
    out = bytearray()
    mileage = 12345.0
    moto = 3600 * 100
    prev = None
    for i, r in enumerate(recs):
        if prev is not None and r['engine']:
            moto += 60
        if r['fix'] and prev is not None and prev['fix'] and abs(r['lat'] - prev['lat']) < 1:
            mileage += haversine((prev['lat'], prev['lon']), (r['lat'], r['lon']))
        noisy = int(round(r['level'])) + rnd.randint(-3, 3) + (40 if i == 100 else 0)
        vals = {1: i + 1, 2: 0, 3: r['t'], 5: 0x80 if r['engine'] else 0x01, 8: (9 << 2) | (2 if r['fix'] else 0) | 1,
                10: to_units(r['lat']), 11: to_units(r['lon']), 12: 1500 + i, 13: r['speed'], 15: mileage,
                37: moto, 38: noisy}
        for n, fmt in FIELDS:
            out += struct.pack(fmt, vals[n])
        if r['fix'] and abs(r['lat'] - 55.75) < 2:
            prev = r
    return bytes(out), mileage - 12345.0


def expected(recs, mileage):
    fixes = [(i, r) for i, r in enumerate(recs) if r['fix']]
    dist, gaps = 0.0, []
    for (i, a), (j, b) in zip(fixes, fixes[1:]):
        d = haversine((a['lat'], a['lon']), (b['lat'], b['lon']))
        if d > 100:
            gaps.append(j + 1)
        else:
            dist += d
    active = [r['engine'] == 1 or r['speed'] > 5 for r in recs]
    runs = []
    for i, a in enumerate(active):
        if runs and runs[-1][0] == a:
            runs[-1][2] = i
        else:
            runs.append([a, i, i])
    # A stop lasts until the next record; one under 5 minutes is no stop and
    # joins the trips on both sides.
    trips, stops, join = [], [], False
    for a, f, l in runs:
        if a:
            if join:
                trips[-1][1] = l
            else:
                trips.append([f, l])
            join = False
            continue
        end = recs[l + 1]['t'] if l + 1 < len(recs) else recs[l]['t']
        if end - recs[f]['t'] >= 300:
            stops.append({'first_record': f + 1, 'last_record': l + 1, 'start': iso(recs[f]['t']),
                          'end': iso(end), 'duration_s': end - recs[f]['t']})
            join = False
        else:
            join = bool(trips)
    return {
        'records': len(recs), 'distance_km': dist, 'mileage_km': mileage, 'gaps': gaps,
        'engine_hours': sum(60 for i, r in enumerate(recs) if i and r['engine']) / 3600.0,
        'max_speed_kmh': max(r['speed'] for r in recs),
        'trips': [{'first_record': f + 1, 'last_record': l + 1, 'start': iso(recs[f]['t']),
                   'end': iso(recs[l]['t'])} for f, l in trips],
        'stops': stops,
        'fuel_events': [{'kind': 'refuel', 'record': 20 + 40 + 10 + 1, 'field': 'RS485_1', 'change': 300},
                        {'kind': 'drain', 'record': 20 + 40 + 30 + 30 + 20 + 1, 'field': 'RS485_1',
                         'change': -150}],
        'mask': mask_text([n for n, _ in FIELDS]),
        'bare_mask': mask_text([1, 13]),
    }


def main():
    recs = build()
    rnd = random.Random(7)
    data, mileage = encode(recs, rnd)
    with open(os.path.join(HERE, 'drive.bin'), 'wb') as f:
        f.write(data)
    with open(os.path.join(HERE, 'drive_bare.bin'), 'wb') as f:
        for i in range(10):
            f.write(struct.pack('<If', i + 1, 30.0 if 3 <= i < 7 else 0.0))
    back = [{'t': T0 + 60 * i - (180 if i == 3 else 0), 'engine': 1, 'speed': 40.0, 'lat': 50.0 + 0.01 * i,
             'lon': 10.0, 'fix': True, 'level': 500.0} for i in range(6)]
    data, _ = encode(back, random.Random(1))
    with open(os.path.join(HERE, 'drive_back.bin'), 'wb') as f:
        f.write(data)
    with open(os.path.join(HERE, 'drive.expected.json'), 'w') as f:
        exp = expected(recs, mileage)
        steps = [haversine((a['lat'], a['lon']), (b['lat'], b['lon'])) for a, b in zip(back, back[1:])]
        exp['back'] = {'gap_record': 4, 'distance_km': sum(steps) - steps[2]}
        json.dump(exp, f, indent=1)
        f.write('\n')


if __name__ == '__main__':
    main()
