#!/usr/bin/env python3
"""Writes the hostile inputs of the tool's tests into a scratch folder: make_hostile_corpus.py
SOURCE_DIR OUT_DIR. Everything is generated here, nothing large is kept in the repository."""
import os
import shutil
import struct
import sys
import zlib

src, out = sys.argv[1], os.path.abspath(sys.argv[2])

HEAD = ('<?xml version="1.0" encoding="UTF-8"?>\n{doctype}'
        '<core:CityModel xmlns:core="http://www.opengis.net/citygml/2.0" '
        'xmlns:bldg="http://www.opengis.net/citygml/building/2.0" '
        'xmlns:app="http://www.opengis.net/citygml/appearance/2.0" '
        'xmlns:gml="http://www.opengis.net/gml">\n')
SQUARE = '0 0 0 10 0 0 10 10 0 0 10 0 0 0 0'


def polygon(pid, pos=SQUARE):
    return (f'<gml:surfaceMember><gml:Polygon gml:id="{pid}"><gml:exterior>'
            f'<gml:LinearRing gml:id="{pid}-r"><gml:posList>{pos}</gml:posList>'
            '</gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember>\n')


def building(body, bid='b', extra='', srs=''):
    envelope = (f'<gml:boundedBy><gml:Envelope srsName="{srs}"><gml:lowerCorner>0 0 0'
                '</gml:lowerCorner><gml:upperCorner>1 1 1</gml:upperCorner></gml:Envelope>'
                '</gml:boundedBy>' if srs else '')
    return (f'{envelope}<core:cityObjectMember><bldg:Building gml:id="{bid}">{extra}'
            '<bldg:lod2MultiSurface><gml:MultiSurface>\n' + body +
            '</gml:MultiSurface></bldg:lod2MultiSurface></bldg:Building></core:cityObjectMember>\n')


def texture(uri, target):
    return ('<app:appearanceMember><app:Appearance><app:surfaceDataMember>'
            f'<app:ParameterizedTexture><app:imageURI>{uri}</app:imageURI>'
            f'<app:target uri="#{target}"><app:TexCoordList><app:textureCoordinates '
            f'ring="#{target}-r">0 0 1 0 1 1 0 1 0 0</app:textureCoordinates></app:TexCoordList>'
            '</app:target></app:ParameterizedTexture></app:surfaceDataMember></app:Appearance>'
            '</app:appearanceMember>\n')


def document(name, body, doctype=''):
    path = os.path.join(out, name)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, 'w') as f:
        f.write(HEAD.format(doctype=doctype) + body + '</core:CityModel>\n')


def png(path, shade):
    raw = b''.join(b'\0' + bytes([shade, shade, shade]) * 2 for _ in range(2))
    chunk = lambda kind, data: (struct.pack('>I', len(data)) + kind + data +
                                struct.pack('>I', zlib.crc32(kind + data)))
    with open(path, 'wb') as f:
        f.write(b'\x89PNG\r\n\x1a\n' + chunk(b'IHDR', struct.pack('>IIBBBBB', 2, 2, 8, 2, 0, 0, 0))
                + chunk(b'IDAT', zlib.compress(raw)) + chunk(b'IEND', b''))


def text(name, content):
    path = os.path.join(out, name)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, 'w') as f:
        f.write(content)


# Textures that block, never end, or lie outside the input's folder.
os.makedirs(os.path.join(out, 'tex', 'in'))
os.mkfifo(os.path.join(out, 'tex', 'in', 'pipe.png'))
png(os.path.join(out, 'tex', 'secret.png'), 200)
for name, uri in [('fifo', 'pipe.png'), ('zero', '/dev/zero'), ('up', '../secret.png'),
                  ('absolute', os.path.join(out, 'tex', 'secret.png'))]:
    document(f'tex/in/{name}.gml', building(polygon('p')) + texture(uri, 'p'))

# Expansion and depth that grow without bound in a naive reader.
entity = '<!DOCTYPE core:CityModel [<!ENTITY big "' + 'x' * 100000 + '">]>\n'
document('entity_bomb.gml', building(polygon('p'), extra='<gml:name>' + '&big;' * 2000 +
                                     '</gml:name>'), doctype=entity)
depth = 10000
document('deep.gml', '<core:cityObjectMember><bldg:Building gml:id="d">' +
         '<bldg:consistsOfBuildingPart><bldg:BuildingPart>' * depth +
         '</bldg:BuildingPart></bldg:consistsOfBuildingPart>' * depth +
         '</bldg:Building></core:cityObjectMember>\n')

# Strings that break a document or an OBJ when written as they stand.
document('strings.gml', building(polygon('p'), extra='<gml:name>Smith &amp; Sons</gml:name>',
                                 srs='EPSG:&quot;25832&lt;'))
document('newline_id.gml', building(polygon('a&#10;v 1 2 3'), bid='b&#10;v 9 9 9'))

# Coordinates and rings the reader must drop, and say so.
document('bad_coordinates.gml', building(
    polygon('good') + polygon('nan', SQUARE.replace('10 10', 'NaN 10')) +
    polygon('inf', SQUARE.replace('10 10', 'inf 10')) +
    polygon('huge', SQUARE.replace('10 10', '1e309 10')) +
    polygon('short', '0 0 0 10 0 0 0 0 0') + polygon('unparsable', SQUARE.replace('10 10', 'x 10')) +
    polygon('odd', SQUARE + ' 7')))
text('nan.obj', 'o good\nv 0 0 0\nv 1 0 0\nv 1 1 0\nv nan 0 0\nf 1 2 3\nf 1 2 4\n')

# Documents that give nothing to convert.
text('drawing.xml', '<svg xmlns="http://www.w3.org/2000/svg"><rect width="1" height="1"/></svg>\n')
document('no_polygons.gml', '<core:cityObjectMember><bldg:Building gml:id="e"/>'
         '</core:cityObjectMember>\n')
text('empty.gml', '')

# An ordinary model under every CityGML extension, a link to it, and texture name collisions.
os.makedirs(os.path.join(out, 'ok'))
shutil.copy(os.path.join(src, 'examples', 'small_house.gml'), os.path.join(out, 'ok', 'house.citygml'))
shutil.copy(os.path.join(src, 'examples', 'facade.png'), os.path.join(out, 'ok', 'facade.png'))
os.symlink('house.citygml', os.path.join(out, 'ok', 'link.xml'))
os.makedirs(os.path.join(out, 'taken'))
png(os.path.join(out, 'taken', 'facade.png'), 17)
text('taken/house.mtl', 'not ours\n')
text('taken/file', 'a plain file, not a folder\n')

# Large enough that a conversion is still writing when the signal comes.
squares = ''.join(polygon(f'q{i}', f'{i} 0 0 {i + 1} 0 0 {i + 1} 1 0 {i} 1 0 {i} 0 0')
                  for i in range(150000))
document('large.gml', building(squares))
text('broken.gml', '<core:CityModel><unclosed>')
os.mkfifo(os.path.join(out, 'tex', 'in', 'pipe.mtl'))
text('tex/in/pipe.obj', 'mtllib pipe.mtl\nv 0 0 0\nv 1 0 0\nv 1 1 0\nf 1 2 3\n')

# OBJ inputs of the conversion to CityGML: objects named by paths, materials and a texture, one
# object per name that the tool must keep apart, and faces that name vertices never given.
os.makedirs(os.path.join(out, 'obj'))
png(os.path.join(out, 'obj', 'brick.png'), 90)
text('obj/house.mtl', 'newmtl red\nKd 1 0 0\nNs 64\nd 0.5\nnewmtl brick\nKd 1 1 1\nmap_Kd brick.png\n')
text('obj/house.obj', 'mtllib house.mtl\nv 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nv 0 0 1\n'
     'vt 0 0\nvt 1 0\nvt 1 1\nvt 0 1\n'
     'o bldg:Building[b1]\\bldg:lod2MultiSurface[]\\gml:MultiSurface[walls]\\\n'
     'usemtl brick\nf 1/1 2/2 3/3 4/4\nusemtl red\nf 1 2 5\ng loose\nf 2 3 5\n')
text('obj/two.obj', 'v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\no first\nf 1 2 3 4\nf 1 2 3\n'
     'g second\nf 4 3 2\nl 1 2\n')
text('obj/bad.obj', 'v 0 0 0\nf 1 2 3\n')
with open(os.path.join(src, 'tests', 'data', 'cli', 'mesh_names.txt')) as names:
    text('obj/names.obj', 'v 0 0 0\nv 1 0 0\nv 1 0 1\nv 0 0 1\n' +
         ''.join(f'o {name}f 1 2 3 4\n' for name in names))
os.makedirs(os.path.join(out, 'texin'))
png(os.path.join(out, 'texin', 't.png'), 60)
text('texin/t.mtl', 'newmtl t\nmap_Kd t.png\n')
text('texin/tex.obj', 'mtllib t.mtl\nv 0 0 0\nv 1 0 0\nv 1 1 0\nvt 0 0\nvt 1 0\nvt 1 1\n'
     'usemtl t\nf 1/1 2/2 3/3\n')
os.makedirs(os.path.join(out, 'blocked', 'blocked.gml'))

# Two textures of one file name in two folders.
for sub in ('x', 'y'):
    os.makedirs(os.path.join(out, 'two', sub))
    shutil.copy(os.path.join(src, 'examples', 'facade.png'), os.path.join(out, 'two', sub, 'wall.png'))
shutil.copy(os.path.join(src, 'tests', 'data', 'cli', 'two_textures.gml'), os.path.join(out, 'two', 'two.gml'))
