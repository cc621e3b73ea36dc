// The page that "qsvtin view" writes: a TIN that can be turned, moved and zoomed, with the height under the pointer.
import {
    BufferAttribute, BufferGeometry, DataTexture, GLSL3, LineBasicMaterial, LineSegments, Mesh, PerspectiveCamera,
    RGBAFormat, Scene, ShaderMaterial, SRGBColorSpace, Vector2, Vector3, WebGLRenderer, WebGLRenderTarget,
    LinearFilter, DoubleSide,
} from 'three';
import { OrbitControls } from 'three/examples/jsm/controls/OrbitControls.js';

const byId = (id) => document.getElementById(id);

// Numbers come as base64 of their little-endian bytes.
function bytesOf(base64) {
    const text = atob(base64);
    const bytes = new Uint8Array(text.length);
    for (let i = 0; i < text.length; ++i) bytes[i] = text.charCodeAt(i);
    return bytes.buffer;
}

function readTerrain() {
    const data = JSON.parse(byId('terrain').textContent);
    return {
        ...data,
        vertices: new Float64Array(bytesOf(data.vertices)),   // x, y from the origin; z
        triangles: new Int32Array(bytesOf(data.triangles)),
        lines: data.lines.map((line) => new Float64Array(bytesOf(line))),
    };
}

// Ranges of the vertices that triangles use.
function boundsOf({ vertices, triangles }) {
    const low = [Infinity, Infinity, Infinity], high = [-Infinity, -Infinity, -Infinity];
    for (const v of triangles) {
        for (let axis = 0; axis < 3; ++axis) {
            low[axis] = Math.min(low[axis], vertices[3 * v + axis]);
            high[axis] = Math.max(high[axis], vertices[3 * v + axis]);
        }
    }
    const centre = low.map((value, axis) => (value + high[axis]) / 2);
    return { low, high, centre, reach: Math.hypot(high[0] - low[0], high[1] - low[1], high[2] - low[2]) / 2 || 1 };
}

// Every triangle brings its own corners, so that the shader can tell triangle and corner by counting. Graphics
// cards compute with few digits: they get places relative to the centre.
function geometryOf({ vertices, triangles }, { centre }) {
    const smooth = new BufferGeometry();
    const places = new Float32Array(vertices.length);
    for (let i = 0; i < vertices.length; ++i) places[i] = vertices[i] - centre[i % 3];
    smooth.setAttribute('position', new BufferAttribute(places, 3));
    smooth.setIndex(new BufferAttribute(new Uint32Array(triangles), 1));
    smooth.computeVertexNormals();
    return smooth.toNonIndexed();
}

const vertexShader = `
uniform float exaggeration;
out vec3 vNormal;
out vec3 vCorner;
out float vHeight;
flat out int vTriangle;
void main() {
    vHeight = position.z;
    vNormal = vec3(normal.xy * exaggeration, normal.z);
    vCorner = vec3(0.0);
    vCorner[gl_VertexID % 3] = 1.0;
    vTriangle = gl_VertexID / 3 + 1;
    gl_Position = projectionMatrix * modelViewMatrix * vec4(position.xy, position.z * exaggeration, 1.0);
}`;

// The tint of the height, lit from the north-west like the maps; edges as wide as a pixel.
const surfaceShader = `
uniform sampler2D tints;
uniform float lowest, highest, edges;
in vec3 vNormal;
in vec3 vCorner;
in float vHeight;
layout(location = 0) out vec4 colour;
void main() {
    float t = highest > lowest ? (vHeight - lowest) / (highest - lowest) : 0.0;
    vec3 tint = texture(tints, vec2(clamp(t, 0.0, 1.0) * 32.0 / 33.0 + 0.5 / 33.0, 0.5)).rgb;
    vec3 normal = normalize(vNormal) * (gl_FrontFacing ? 1.0 : -1.0);
    float shade = 0.30 + 0.70 * max(0.0, dot(normal, normalize(vec3(-1.0, 1.0, 1.414)))) * 1.414;
    vec3 lit = shade < 1.0 ? mix(vec3(0.13, 0.15, 0.22), tint, 0.12 + 0.88 * shade)
                           : mix(tint, vec3(1.0, 0.995, 0.96), min(0.6, 1.1 * (shade - 1.0)));
    vec3 width = fwidth(vCorner);
    vec3 nearness = smoothstep(vec3(0.0), width * 1.2, vCorner);
    float edge = (1.0 - min(min(nearness.x, nearness.y), nearness.z)) * (1.0 - smoothstep(0.15, 0.5, max(width.x, max(width.y, width.z))));
    colour = vec4(mix(lit, vec3(0.15), 0.45 * edges * edge), 1.0);
}`;

// The number of the triangle as a colour.
const numberShader = `
flat in int vTriangle;
layout(location = 0) out vec4 colour;
void main() {
    colour = vec4(ivec4(vTriangle, vTriangle >> 8, vTriangle >> 16, vTriangle >> 24) & 255) / 255.0;
}`;

function tintTexture(tints) {
    const pixels = new Uint8Array(4 * tints.length);
    tints.forEach(([r, g, b], i) => pixels.set([r, g, b, 255], 4 * i));
    const texture = new DataTexture(pixels, tints.length, 1, RGBAFormat);
    texture.minFilter = texture.magFilter = LinearFilter;
    texture.needsUpdate = true;
    return texture;
}

function lineSegments(lines, { centre }, colour) {
    const places = [];
    for (const line of lines) {
        for (let i = 0; i + 3 < line.length; i += 3) {
            for (let k = 0; k < 6; ++k) places.push(line[i + k] - centre[k % 3]);
        }
    }
    const geometry = new BufferGeometry();
    geometry.setAttribute('position', new BufferAttribute(new Float32Array(places), 3));
    return new LineSegments(geometry, new LineBasicMaterial({ color: colour }));
}

// Draws the one pixel at a place of the canvas with numbers for colours, and reads it.
class TrianglePicker {
    constructor(renderer, scene, camera, surface, material) {
        Object.assign(this, { renderer, scene, camera, surface, material });
        this.pixel = new WebGLRenderTarget(1, 1);
        this.bytes = new Uint8Array(4);
    }

    // The triangle at a place in pixels from the upper left, or -1.
    at(x, y) {
        const { renderer, camera, surface } = this;
        const size = renderer.getSize(new Vector2());
        const shown = surface.material;
        surface.material = this.material;
        camera.setViewOffset(size.x, size.y, x, y, 1, 1);
        renderer.setRenderTarget(this.pixel);
        renderer.setClearColor(0, 0);
        renderer.clear();
        renderer.render(surface, camera);
        renderer.readRenderTargetPixels(this.pixel, 0, 0, 1, 1, this.bytes);
        renderer.setRenderTarget(null);
        camera.clearViewOffset();
        surface.material = shown;
        const [a, b, c, d] = this.bytes;
        return (a | (b << 8) | (c << 16) | (d << 24)) - 1;
    }
}

// Where the line of sight meets the plane of a triangle, computed with all digits.
function placeOn({ vertices, triangles }, { centre }, triangle, exaggeration, from, along) {
    const corner = [0, 1, 2].map((k) => {
        const v = 3 * triangles[3 * triangle + k];
        return new Vector3(vertices[v] - centre[0], vertices[v + 1] - centre[1], (vertices[v + 2] - centre[2]) * exaggeration);
    });
    const normal = new Vector3().subVectors(corner[1], corner[0]).cross(new Vector3().subVectors(corner[2], corner[0]));
    const share = normal.dot(new Vector3().subVectors(corner[0], from)) / normal.dot(along);
    const place = new Vector3().copy(along).multiplyScalar(share).add(from);
    return [place.x + centre[0], place.y + centre[1], place.z / exaggeration + centre[2]];
}

function start() {
    const terrain = readTerrain();
    const bounds = boundsOf(terrain);
    document.title = terrain.title;
    byId('title').textContent = terrain.title;
    byId('facts').textContent = `${terrain.triangles.length / 3} triangles, heights ${bounds.low[2].toFixed(3)} to ${bounds.high[2].toFixed(3)}`;

    const renderer = new WebGLRenderer({ antialias: true, canvas: byId('canvas'), preserveDrawingBuffer: true });
    renderer.setPixelRatio(window.devicePixelRatio);
    const shared = { exaggeration: { value: 1 } };
    const material = new ShaderMaterial({
        glslVersion: GLSL3, vertexShader, fragmentShader: surfaceShader, side: DoubleSide,
        polygonOffset: true, polygonOffsetFactor: 1, polygonOffsetUnits: 1,
        uniforms: {
            ...shared, tints: { value: tintTexture(terrain.tints) }, edges: { value: 1 },
            lowest: { value: bounds.low[2] - bounds.centre[2] }, highest: { value: bounds.high[2] - bounds.centre[2] },
        },
    });
    const numbers = new ShaderMaterial({
        glslVersion: GLSL3, vertexShader, fragmentShader: numberShader, side: DoubleSide, uniforms: shared,
    });
    const surface = new Mesh(geometryOf(terrain, bounds), material);
    surface.frustumCulled = false;
    const lines = lineSegments(terrain.lines, bounds, 0xb02a1c);
    lines.frustumCulled = false;
    const scene = new Scene();
    scene.add(surface, lines);

    const camera = new PerspectiveCamera(35, 1, bounds.reach / 200, bounds.reach * 40);
    camera.up.set(0, 0, 1);
    const controls = new OrbitControls(camera, renderer.domElement);
    controls.screenSpacePanning = true;
    controls.zoomToCursor = true;
    controls.maxDistance = bounds.reach * 20;
    const picker = new TrianglePicker(renderer, scene, camera, surface, numbers);

    let pointer = null;   // without one (a finger, a keyboard), the middle of the view
    let waiting = false;
    function redraw() {
        if (!waiting) requestAnimationFrame(draw);
        waiting = true;
    }

    function tellPlace() {
        const size = renderer.getSize(new Vector2());
        const at = pointer ?? { x: Math.floor(size.x / 2), y: Math.floor(size.y / 2) };
        const triangle = picker.at(at.x, at.y);
        if (triangle < 0) {
            byId('place').textContent = 'no surface here';
            return;
        }
        const along = new Vector3(((at.x + 0.5) / size.x) * 2 - 1, 1 - ((at.y + 0.5) / size.y) * 2, 0.5)
            .unproject(camera).sub(camera.position).normalize();
        const [x, y, z] = placeOn(terrain, bounds, triangle, shared.exaggeration.value, camera.position, along);
        byId('place').textContent =
            `x ${(x + terrain.origin[0]).toFixed(3)}  y ${(y + terrain.origin[1]).toFixed(3)}  height ${z.toFixed(3)}`;
    }

    function draw() {
        waiting = false;
        renderer.setClearColor(0xeef1f4, 1);
        renderer.render(scene, camera);
        byId('north').style.transform = `rotate(${controls.getAzimuthalAngle()}rad)`;
        tellPlace();
        document.body.dataset.state = 'drawn';
    }

    // The viewer stands in a direction, from north over east, and above the horizon, in degrees.
    function lookFrom(azimuth, elevation) {
        const a = (azimuth * Math.PI) / 180, e = (elevation * Math.PI) / 180;
        const distance = (bounds.reach * 0.78) / Math.sin(((camera.fov / 2) * Math.PI) / 180 * Math.min(1, camera.aspect));
        controls.target.set(0, 0, 0);
        camera.position.set(Math.sin(a) * Math.cos(e), Math.cos(a) * Math.cos(e), Math.sin(e)).multiplyScalar(distance);
        controls.update();
        redraw();
    }

    function exaggerate(factor) {
        shared.exaggeration.value = factor;
        lines.scale.z = factor;
        byId('factor').textContent = `${factor}x`;
        redraw();
    }

    function fit() {
        renderer.setSize(window.innerWidth, window.innerHeight);
        camera.aspect = window.innerWidth / window.innerHeight;
        camera.updateProjectionMatrix();
        redraw();
    }

    controls.addEventListener('change', redraw);
    window.addEventListener('resize', fit);
    const canvas = renderer.domElement;
    canvas.addEventListener('pointermove', (event) => {
        pointer = { x: Math.floor(event.clientX), y: Math.floor(event.clientY) };
        redraw();
    });
    canvas.addEventListener('pointerleave', () => { pointer = null; redraw(); });
    byId('exaggeration').addEventListener('input', (event) => exaggerate(Number(event.target.value)));
    byId('edges').addEventListener('change', (event) => { material.uniforms.edges.value = Number(event.target.checked); redraw(); });
    byId('lines').addEventListener('change', (event) => { lines.visible = event.target.checked; redraw(); });
    byId('lines').parentElement.hidden = terrain.lines.length === 0;
    byId('slope').addEventListener('click', () => lookFrom(205, 30));
    byId('plan').addEventListener('click', () => lookFrom(180, 89.9));
    byId('exaggeration').value = terrain.exaggeration;

    fit();
    exaggerate(terrain.exaggeration);
    lookFrom(205, 30);
}

try {
    start();
} catch (error) {
    byId('place').textContent = `This page needs a browser with WebGL 2. (${error.message})`;
    document.body.dataset.state = 'failed';
}
